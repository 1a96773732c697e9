#pragma once

#include <functional>
#include <mechanism/RobotEntity.h>
#include <string>
#include <vector>

namespace cell {

/// Told what is wrong with a set of values (the value shown, what was expected); throws, unless it is only to
/// take note of values outside the limits.
using Refusal = std::function<void(const std::string& shown, const std::string& expected)>;

/// All joint values (rad) of a robot from degrees. A coupled arm also takes its independent values alone.
std::vector<double> FullValues(const RobotEntity& robot, const std::vector<double>& degrees,
                               const Refusal& refuse);

/// Refuses each value (rad) that is outside the robot's limits, the first one only where `refuse` throws; the
/// joint is named by its number.
void RequireInLimits(RobotEntity& robot, const std::vector<double>& values, const Refusal& refuse);

/// Moves the robot, its bodies and what it carries to the values (rad).
void MoveTo(RobotEntity& robot, const std::vector<double>& values);

} // namespace cell
