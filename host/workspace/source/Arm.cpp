#include "Arm.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

namespace WorkSpace {

namespace {

constexpr double MillimetresPerMetre = 1000.0;
constexpr double Turn = 2 * std::numbers::pi;
constexpr std::size_t Rows = 6;
constexpr std::size_t CoupledRows = 7;

/// The same text in every locale, unlike std::to_string.
std::string Text(double number) {
    std::array<char, 32> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), number).ptr};
}

[[noreturn]] void Refuse(const std::string& what) { throw std::invalid_argument("WorkSpace: " + what); }

void RequireFinite(const Robot& robot) {
    const auto finite = [](const auto& numbers) {
        return std::all_of(std::begin(numbers), std::end(numbers), [](double n) { return std::isfinite(n); });
    };
    if (!finite(robot.toolOffset)) {
        Refuse("tool offset is not finite");
    }
    for (std::size_t row = 0; row < robot.dh.size(); ++row) {
        if (!finite(robot.dh[row])) {
            Refuse("row " + std::to_string(row) + " of the table is not finite");
        }
    }
}

// A range of more than one turn reaches nothing that one turn does not.
Range RangeOf(const Robot& robot, std::size_t joint) {
    const double low = robot.jointMin[joint];
    const double high = robot.jointMax[joint];
    if (!(std::isfinite(low) && std::isfinite(high) && low <= high)) {
        Refuse("joint " + std::to_string(joint + 1) + ": " + Text(low) + " to " + Text(high) +
               " rad is no range");
    }
    return high - low > Turn ? Range{low, low + Turn} : Range{low, high};
}

// In a coupled wrist the limits of the sixth value also bound the fifth, with opposite sign.
Range LeaderRange(const Robot& robot) {
    const double low = std::max(robot.jointMin[4], -robot.jointMax[5]);
    const double high = std::min(robot.jointMax[4], -robot.jointMin[5]);
    Robot bounded;
    bounded.jointMin[4] = low;
    bounded.jointMax[4] = high;
    return RangeOf(bounded, 4);
}

double Length(const Point3& v) { return std::hypot(v.x, v.y, v.z); }

} // namespace

Pose Pose::operator*(const Pose& other) const {
    Pose product{};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            product.r[3 * row + column] = r[3 * row] * other.r[column] +
                                          r[3 * row + 1] * other.r[3 + column] +
                                          r[3 * row + 2] * other.r[6 + column];
        }
    }
    product.p = *this * other.p;
    return product;
}

std::vector<double> Range::Spread(int count) const {
    if (count < 2) {
        return {(low + high) / 2};
    }
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        values.push_back(low + Width() * i / (count - 1));
    }
    return values;
}

Arm::Arm(const Robot& robot)
    : table(robot.dh), tool{robot.toolOffset[0] * MillimetresPerMetre,
                            robot.toolOffset[1] * MillimetresPerMetre,
                            robot.toolOffset[2] * MillimetresPerMetre} {
    if (table.size() != Rows && table.size() != CoupledRows) {
        Refuse("the table has " + std::to_string(table.size()) + " rows, expected 6 or 7");
    }
    RequireFinite(robot);
    upperArm = RangeOf(robot, 1);
    forearm = RangeOf(robot, 2);
    wrist = {RangeOf(robot, 3), Coupled() ? LeaderRange(robot) : RangeOf(robot, 4),
             RangeOf(robot, table.size() - 1)};
    RequireParallelArm();
    const auto span = [&](std::size_t row) { return std::abs(table[row][0]) + std::abs(table[row][2]); };
    leverage[2] = std::hypot(tool.x, tool.y);
    leverage[1] = Length(tool) + span(table.size() - 1) + (Coupled() ? span(5) : 0);
    leverage[0] = leverage[1] + span(4);
}

// Revolving the section about joint 1's axis gives the workspace only where joints 2 and 3 move in a plane
// through the axis, or parallel to it.
void Arm::RequireParallelArm() const {
    constexpr double Aligned = 1e-9;
    if (std::abs(std::cos(table[1][1])) > Aligned || std::abs(std::sin(table[2][1])) > Aligned) {
        Refuse("joints 2 and 3 are not parallel to each other and square to joint 1");
    }
}

Pose Arm::Row(std::size_t row, double value) const {
    const auto& [a, alpha, d, theta] = table[row];
    const double ca = std::cos(alpha);
    const double sa = std::sin(alpha);
    const double ct = std::cos(theta + value);
    const double st = std::sin(theta + value);
    return {{ct, -st, 0, ca * st, ca * ct, -sa, sa * st, sa * ct, ca}, {a, -sa * d, ca * d}};
}

Point3 Arm::Shoulder() const { return (Row(0, 0) * Row(1, 0)).p; }

Pose Arm::Elbow(double upper, double fore) const { return Row(0, 0) * Row(1, upper) * Row(2, fore); }

double Arm::AxisPlane() const {
    const Pose elbow = Elbow(0, 0);
    return -elbow.p.y / elbow.r[5];
}

Point3 Arm::ToolInElbow(const std::array<double, 3>& values) const {
    const auto& [fourth, fifth, last] = values;
    const Pose hand = Coupled() ? Row(5, -fifth) * Row(6, last) : Row(5, last);
    return Row(3, fourth) * (Row(4, fifth) * (hand * tool));
}

} // namespace WorkSpace
