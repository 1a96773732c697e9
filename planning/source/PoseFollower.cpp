#include <planning/PoseFollower.h>

#include <algorithm>
#include <cmath>
#include <host/tools/TextHandle.h>
#include <utility>

namespace planning {

namespace {

/// Largest change of a value (rad) in one step that counts as continuous; for larger ones the step is halved.
constexpr double Smooth = 0.1;
/// Shortest step, as a fraction of the path.
constexpr double Shortest = 1e-3;
/// A jump within this distance (rad) of a limit is attributed to the limit.
constexpr double AtLimit = 0.2;
/// A jump is attributed to a singularity where the smallest singular value is below this.
constexpr double NearSingularity = 0.02;

double LargestChange(const std::vector<double>& from, const Solution& to) {
    double largest = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        largest = std::max(largest, std::abs(to.values[i] - from[i]));
    }
    return largest;
}

} // namespace

std::string Obstacle::Text() const {
    switch (kind) {
    case Kind::OutOfReach:
        return "out of reach by " + TextHandle::Shortest(excess) + " mm";
    case Kind::Limit:
        return "limit of joint " + std::to_string(joint + 1);
    case Kind::Singularity:
        return "singularity";
    case Kind::Configuration:
        break;
    }
    return "change of configuration";
}

PoseFollower::PoseFollower(const CarriedArm& arm_, const ToolWay& way_, std::vector<double> start)
    : arm(arm_), way(way_), values(std::move(start)) {}

bool PoseFollower::Follow(double to) {
    double step = to - at;
    while (at < to) {
        const double next = at + step >= to ? to : at + step;
        if (Step(next)) {
            at = next;
            continue;
        }
        step /= 2;
        if (step < Shortest) {
            why = Explain(next);
            return false;
        }
    }
    return true;
}

bool PoseFollower::Step(double to) {
    const Solutions solutions = arm.SolveInWorld(way.pose(to), way.carrier(to), values);
    const auto* const nearest =
        std::min_element(solutions.begin(), solutions.end(), [&](const Solution& a, const Solution& b) {
            return LargestChange(values, a) < LargestChange(values, b);
        });
    if (nearest == solutions.end() || LargestChange(values, *nearest) > Smooth) {
        return false;
    }
    std::copy_n(nearest->values.begin(), values.size(), values.begin());
    return true;
}

Obstacle PoseFollower::Explain(double to) const {
    using Kind = Obstacle::Kind;
    const Solutions solutions = arm.SolveInWorld(way.pose(to), way.carrier(to), values);
    if (solutions.outcome == Outcome::OutOfReach) {
        return {Kind::OutOfReach, at, solutions.excess};
    }
    std::size_t nearest = 0;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto& [low, high] = arm.Arm().Limit(i);
        const double margin = std::min(values[i] - low, high - values[i]);
        nearest = margin < least ? i : nearest;
        least = std::min(least, margin);
    }
    if (solutions.outcome == Outcome::OutsideLimits || least < AtLimit) {
        return {Kind::Limit, at, 0, nearest};
    }
    const double singular = arm.Arm().JacobianAt(values).SingularValues(arm.Arm().Reach()).back();
    return {singular < NearSingularity ? Kind::Singularity : Kind::Configuration, at};
}

} // namespace planning
