#include "Arm.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <host/tools/ArmFacts.h>
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

} // namespace

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

Rigid Arm::Row(std::size_t row, double value) const { return ArmFacts::FrameOfRow(table[row], value); }

Vec Arm::Shoulder() const { return spatial::Origin(Row(0, 0) * Row(1, 0)); }

Rigid Arm::Elbow(double upper, double fore) const { return Row(0, 0) * Row(1, upper) * Row(2, fore); }

double Arm::AxisPlane() const {
    const Rigid elbow = Elbow(0, 0);
    return -elbow.p[1] / elbow.r[5];
}

Vec Arm::ToolInElbow(const std::array<double, 3>& values) const {
    const auto& [fourth, fifth, last] = values;
    const Rigid hand = Coupled() ? Row(5, -fifth) * Row(6, last) : Row(5, last);
    return Apply(Row(3, fourth), Apply(Row(4, fifth), Apply(hand, tool)));
}

} // namespace WorkSpace
