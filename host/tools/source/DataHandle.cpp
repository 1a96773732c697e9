#include <host/tools/DataHandle.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <host/tools/RefusedValue.h>
#include <host/tools/Rigid.h>
#include <host/tools/gpHandle.h>
#include <iterator>
#include <json/json.h>
#include <stdexcept>

namespace {

/// What rounding to six decimals can do to a product of two rows: six errors of 5e-7, weighted by at most
/// 3^(1/2) a row.
constexpr double OrthonormalTolerance = 2e-6;
/// Rows this good come from doubles that were written in full and stay as they are to the bit.
constexpr double RoundingTolerance = 1e-12;
/// A thousand kilometres, or what degrees nobody turns.
constexpr double LargestNumber = 1e9;

template <std::size_t N>
std::array<double, N> ReadNumbers(const Json::Value& json) {
    if (!json.isArray() || json.size() != N) {
        throw std::invalid_argument("a transform is an array of " + std::to_string(N) + " numbers");
    }
    std::array<double, N> numbers{};
    for (Json::ArrayIndex i = 0; i < N; ++i) {
        const double number = json[i].isNumeric() ? json[i].asDouble() : std::nan("");
        if (!DataHandle::IsSound(number)) {
            throw std::invalid_argument("a transform: element " + std::to_string(i) +
                                        " is not a finite number within 1e9");
        }
        numbers[i] = number;
    }
    return numbers;
}

double Dot(const double* a, const double* b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// Each row must be a unit vector at right angles to the rows before it, and the three right-handed.
/// @return how far the worst product of two rows is from that.
double RequireRotation(const double* r) {
    double worst = 0;
    for (int row = 0; row < 3; ++row) {
        for (int other = 0; other <= row; ++other) {
            const double expected = row == other ? 1 : 0;
            const double error = std::abs(Dot(r + 3 * row, r + 3 * other) - expected);
            worst = std::max(worst, error);
            if (error > OrthonormalTolerance) {
                throw std::invalid_argument("a transform: elements " + std::to_string(4 * row) + " to " +
                                            std::to_string(4 * row + 2) +
                                            " are not a unit row at right angles to the others");
            }
        }
    }
    const std::array<double, 3> third{r[1] * r[5] - r[2] * r[4], r[2] * r[3] - r[0] * r[5],
                                      r[0] * r[4] - r[1] * r[3]};
    if (Dot(third.data(), r + 6) < 0) {
        throw std::invalid_argument("a transform: elements 8 to 10 make the rotation left-handed");
    }
    return worst;
}

/// Takes an almost orthonormal matrix to the nearest rotation: R (3 - R' R) / 2 squares the error each time.
void MakeOrthonormal(double* r) {
    constexpr int Steps = 2; // 1e-6, 1e-12, 1e-24
    for (int step = 0; step < Steps; ++step) {
        double next[9] = {};
        for (int row = 0; row < 3; ++row) {
            for (int other = 0; other < 3; ++other) {
                const double weight = (row == other ? 1.5 : 0) - 0.5 * Dot(r + 3 * row, r + 3 * other);
                for (int col = 0; col < 3; ++col) {
                    next[3 * row + col] += weight * r[3 * other + col];
                }
            }
        }
        std::copy(std::begin(next), std::end(next), r);
    }
}

} // namespace

bool DataHandle::IsSound(double number) { return std::abs(number) <= LargestNumber; }

Json::Value DataHandle::TrsfToJsonArr(const gp_Trsf& trsf) {
    Json::Value json(Json::arrayValue);
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col <= 4; ++col) {
            json.append(trsf.Value(row, col));
        }
    }
    return json;
}

gp_Trsf DataHandle::JsonArrToTrsf(const Json::Value& json) {
    const auto n = ReadNumbers<12>(json);
    Rigid rigid{{n[0], n[1], n[2], n[4], n[5], n[6], n[8], n[9], n[10]}, {n[3], n[7], n[11]}};
    if (RequireRotation(rigid.r) > RoundingTolerance) {
        MakeOrthonormal(rigid.r);
    }
    return rigid.ToTrsf();
}

Json::Value DataHandle::TrsfToJsonSix(const gp_Trsf& trsf) {
    return LocEulerToJson(gpHandle::TrsfToEuler(trsf), 6);
}

gp_Trsf DataHandle::JsonSixToTrsf(const Json::Value& json) {
    const auto n = ReadNumbers<6>(json);
    return gpHandle::EulerToTrsf({gp_Pnt(n[0], n[1], n[2]), gp_Pnt(n[3], n[4], n[5])});
}

void DataHandle::Refuse(const std::string& key, const Json::Value& value, const std::string& expected) {
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    throw RefusedValue(key, Json::writeString(writer, value), expected);
}
