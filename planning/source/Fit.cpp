#include "Fit.h"

#include <host/tools/TextHandle.h>
#include <stdexcept>

namespace planning {

namespace {

/// Tolerances for the geometry of a kind: rounding in a file stays below them, any other geometry is far
/// above.
constexpr double NearAngle = 0.01; // rad
constexpr double NearLength = 1.0; // mm
/// Rounding error of unit vectors, and of lengths of a metre.
constexpr double ExactAngle = 1e-12;
constexpr double ExactLength = 1e-9;

} // namespace

void Fit::RequireAngle(double off, const std::string& what, const char* names) {
    if (!(off <= NearAngle)) {
        throw std::invalid_argument("inverse kinematics: axes " + std::string(names) + " are " +
                                    TextHandle::Shortest(off) + " (sine) off, expected them " + what);
    }
    exact = exact && off <= ExactAngle;
}

void Fit::RequireSquare(const Axis& a, const Axis& b, const char* names) {
    RequireAngle(std::abs(Dot(a.direction, b.direction)), "square to each other", names);
}

void Fit::RequireParallel(const Axis& a, const Axis& b, const char* names) {
    RequireAngle(Length(Cross(a.direction, b.direction)), "parallel", names);
}

void Fit::RequireNone(double distance, const std::string& what) {
    if (!(std::abs(distance) <= NearLength)) {
        throw std::invalid_argument("inverse kinematics: " + what + " is " + TextHandle::Shortest(distance) +
                                    " mm, expected 0");
    }
    exact = exact && std::abs(distance) <= ExactLength;
}

Vec Fit::RequireMeeting(const Axis& a, const Axis& b, const char* names) {
    const Vec across = Cross(a.direction, b.direction);
    const double square = Dot(across, across);
    if (!(square > NearAngle * NearAngle)) {
        throw std::invalid_argument("inverse kinematics: axes " + std::string(names) +
                                    " are parallel, expected them to meet in one point");
    }
    const Vec between = b.point - a.point;
    RequireNone(Dot(between, across) / std::sqrt(square), "distance between axes " + std::string(names));
    const double alongA = Dot(Cross(between, b.direction), across) / square;
    const double alongB = Dot(Cross(between, a.direction), across) / square;
    return 0.5 * ((a.point + alongA * a.direction) + (b.point + alongB * b.direction));
}

} // namespace planning
