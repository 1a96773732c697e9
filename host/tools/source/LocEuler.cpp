#include <host/tools/LocEuler.h>

#include <array>
#include <cmath>
#include <json/json.h>
#include <stdexcept>
#include <string>

namespace {

/// Largest difference (mm, rad) between numbers of equal poses.
constexpr double SamePoseTolerance = 1e-7;
constexpr int PoseNumbers = 6;
constexpr int PositionNumbers = 3;

std::array<double, PoseNumbers> Numbers(const LocEuler& pose) {
    return {pose.location.X(), pose.location.Y(), pose.location.Z(),
            pose.euler.X(),    pose.euler.Y(),    pose.euler.Z()};
}

double NumberAt(const Json::Value& json, Json::ArrayIndex index) {
    const Json::Value& element = json[index];
    if (!element.isNull() && !element.isNumeric()) {
        Json::throwLogicError("a pose: element " + std::to_string(index) + " is not a number");
    }
    return element.asDouble();
}

} // namespace

bool operator==(const LocEuler& a, const LocEuler& b) {
    const auto left = Numbers(a);
    const auto right = Numbers(b);
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (std::abs(left[i] - right[i]) > SamePoseTolerance) {
            return false;
        }
    }
    return true;
}

Json::Value LocEulerToJson(const LocEuler& pose, int count) {
    if (count != PoseNumbers && count != PositionNumbers) {
        throw std::invalid_argument("a pose is written as 3 or 6 numbers, not " + std::to_string(count));
    }
    const auto numbers = Numbers(pose);
    Json::Value json(Json::arrayValue);
    for (int i = 0; i < count; ++i) {
        json.append(numbers[static_cast<std::size_t>(i)]);
    }
    return json;
}

LocEuler LocEulerFromJson(const Json::Value& json) {
    if (!json.isNull() && !json.isArray()) {
        Json::throwLogicError("a pose is an array of numbers");
    }
    return {gp_Pnt(NumberAt(json, 0), NumberAt(json, 1), NumberAt(json, 2)),
            gp_Pnt(NumberAt(json, 3), NumberAt(json, 4), NumberAt(json, 5))};
}
