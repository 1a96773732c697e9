#include <cell/model/JointValues.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <cmath>

namespace cell {

namespace {

/// The wrist of a coupled arm: the follower turns against the leader.
constexpr std::size_t Leader = 4;
constexpr std::size_t Follower = 5;
/// Coupled values that were written by hand or by a program agree to this many degrees.
constexpr double CouplingTolerance = 1e-6;

void RequireCoupling(const std::vector<double>& degrees, const Refusal& refuse) {
    if (!(std::abs(degrees[Leader] + degrees[Follower]) <= CouplingTolerance)) {
        refuse(Shortest(degrees[Follower]),
               "minus the fifth value, " + Shortest(-degrees[Leader]) + ", as value 6 of a coupled wrist");
    }
}

} // namespace

std::vector<double> FullValues(const RobotEntity& robot, const std::vector<double>& degrees,
                               const Refusal& refuse) {
    const auto dof = static_cast<std::size_t>(robot.GetDOF(0));
    const bool coupled = robot.IsCouplingRobot();
    std::vector<double> values = degrees;
    if (coupled && values.size() + 1 == dof) {
        values.insert(values.begin() + Follower, -values[Leader]);
    }
    if (values.size() != dof) {
        refuse(std::to_string(degrees.size()) + (degrees.size() == 1 ? " value" : " values"),
               coupled ? std::to_string(dof) + " values in degrees, or the " + std::to_string(dof - 1) +
                             " independent ones"
                       : std::to_string(dof) + " values in degrees");
    }
    if (coupled) {
        RequireCoupling(values, refuse);
    }
    for (double& value : values) {
        value *= RadiansPerDegree;
    }
    return values;
}

void RequireInLimits(RobotEntity& robot, const std::vector<double>& values, const Refusal& refuse) {
    const auto limits = robot.GetLimit(robot.GetRobotSystem(), 0);
    for (std::size_t i = 0; i < limits.size(); ++i) {
        const auto& [low, high] = limits[i];
        if (!(values[i] >= low && values[i] <= high)) {
            refuse(Degrees(values[i]) + " degrees at joint " + std::to_string(i + 1) + " of " +
                       robot.GetName(),
                   "from " + Degrees(low) + " to " + Degrees(high));
        }
    }
}

void MoveTo(RobotEntity& robot, const std::vector<double>& values) {
    robot.SetCurrentValue(values, robot.GetRobotSystem());
    robot.ForwardTrsf(robot.GetRobotSystem(), true, true);
}

} // namespace cell
