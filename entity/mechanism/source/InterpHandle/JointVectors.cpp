#include <mechanism/InterpHandle.h>

#include "Count.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

using namespace mechanism_detail;

namespace {

using Joints = std::vector<double>;

constexpr double SmallestStep = 0.001;
constexpr std::size_t ArmJoints = 6;
/// Weight of external axes, which move in millimetres where the arm moves in radians.
constexpr double ExternalAxisWeight = 1.0 / 1000;

/// Memory of one vector: its values and the object itself.
std::size_t BytesOf(const Joints& joints) { return sizeof(Joints) + joints.size() * sizeof(double); }

/// The vector at k of `parts` equal parts from a to b.
Joints Between(const Joints& a, const Joints& b, int k, double parts) {
    Joints joints(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        joints[i] = a[i] + k * (b[i] - a[i]) / parts;
    }
    return joints;
}

double WeightedChange(const Joints& a, const Joints& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const double weight = i < ArmJoints ? 1 : ExternalAxisWeight;
        largest = std::max(largest, weight * std::abs(b[i] - a[i]));
    }
    return largest;
}

/// Numbers of parts of all legs of a polyline; all are checked before any vector is appended.
std::vector<double> PartsOf(const std::vector<Joints>& polyline, double step) {
    std::vector<double> parts;
    double total = 0;
    for (std::size_t i = 0; i + 1 < polyline.size(); ++i) {
        if (polyline[i + 1].size() < polyline[i].size()) {
            throw std::invalid_argument("EquallyDisInterpolate: vector " + std::to_string(i + 1) + " has " +
                                        std::to_string(polyline[i + 1].size()) + " values, expected " +
                                        std::to_string(polyline[i].size()) + " as the one before it");
        }
        parts.push_back(Quotient(WeightedChange(polyline[i], polyline[i + 1]), step));
        total += 1 + Count(parts.back(), "EquallyDisInterpolate");
    }
    RequireMemory(total, BytesOf(polyline.front()));
    return parts;
}

} // namespace

std::vector<std::vector<double>> InterpHandle::InterpolationPtsByNum(const std::vector<double>&& a,
                                                                     const std::vector<double>&& b, int n) {
    std::vector<Joints> vectors;
    if (a.empty() || a.size() != b.size()) {
        return vectors;
    }
    const double count = std::max(n, 0) + 2.0;
    RequireMemory(count, BytesOf(a));
    vectors.reserve(static_cast<std::size_t>(count));
    for (std::int64_t k = 0; k <= n; ++k) {
        vectors.push_back(Between(a, b, static_cast<int>(k), n));
    }
    vectors.push_back(b);
    return vectors;
}

std::vector<std::vector<double>> InterpHandle::InterpolationPtsDescartes(const std::vector<double>& a,
                                                                         const std::vector<double>& b,
                                                                         double step) {
    std::vector<Joints> vectors;
    if (a.empty() || a.size() != b.size() || std::abs(step) < SmallestStep) {
        return vectors;
    }
    double parts = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        parts = std::max(parts, std::abs((b[i] - a[i]) / step));
    }
    RequireMemory(Count(parts, "InterpolationPtsDescartes"), BytesOf(a));
    for (int k = 0; parts > k; ++k) {
        vectors.push_back(Between(a, b, k, parts));
    }
    vectors.push_back(b);
    return vectors;
}

void InterpHandle::EquallyDisInterpolate(const std::vector<std::vector<double>>& in,
                                         std::vector<std::vector<double>>& out, double step) {
    if (in.size() < 2) {
        return;
    }
    const std::vector<double> parts = PartsOf(in, step);
    std::vector<Joints> filled;
    for (std::size_t i = 0; i + 1 < in.size(); ++i) {
        filled.push_back(in[i]);
        for (int k = 1; k < parts[i]; ++k) {
            filled.push_back(Between(in[i], in[i + 1], k, parts[i]));
        }
    }
    filled.push_back(in.back());
    out.insert(out.end(), std::make_move_iterator(filled.begin()), std::make_move_iterator(filled.end()));
}
