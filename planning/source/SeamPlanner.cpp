#include <planning/SeamPlanner.h>

#include "SeamBetween.h"
#include "SeamReasons.h"

#include <algorithm>
#include <host/tools/TextHandle.h>
#include <stdexcept>

namespace planning {

namespace {

void RequirePositive(const char* place, double value) {
    if (!(value > 0)) {
        throw std::invalid_argument(std::string(place) + ": " + TextHandle::Shortest(value) +
                                    ", expected a number above 0");
    }
}

void RequireLength(const char* place, double value) {
    if (!(value >= 0 && std::isfinite(value))) {
        throw std::invalid_argument(std::string(place) + ": " + TextHandle::Shortest(value) +
                                    ", expected a length of 0 or more");
    }
}

} // namespace

AxisValues Split(const CarriedArm& arm, std::span<const double> values) {
    const std::size_t joints = arm.Arm().Joints();
    const std::size_t carried = arm.Carrier().Axes();
    return {values.first(joints), values.subspan(joints, carried), values.subspan(joints + carried)};
}

SeamPlanner::SeamPlanner(const CarriedArm& arm_, SeamRules rules_) : arm(arm_), rules(std::move(rules_)) {
    RequirePositive("distance between poses", rules.distance);
    RequirePositive("angle between poses", rules.angle);
    RequireLength("least manipulability", rules.singular);
    RequirePositive("length of costs", rules.costs.length);
    if (!rules.steps.empty() && rules.steps.size() != Axes()) {
        throw std::invalid_argument("step limits: " + std::to_string(rules.steps.size()) +
                                    " numbers, expected " + std::to_string(Axes()));
    }
    for (std::size_t i = 0; i < rules.steps.size(); ++i) {
        RequirePositive(("step limit " + std::to_string(i + 1)).c_str(), rules.steps[i]);
    }
}

std::size_t SeamPlanner::Axes() const {
    return arm.Arm().Joints() + arm.Carrier().Axes() + arm.Holder().Axes();
}

SeamResult SeamPlanner::Plan(const Seam& seam, std::span<const double> from) const {
    RequireLength("approach", seam.approach);
    RequireLength("retract", seam.retract);
    if (!from.empty() && from.size() != Axes()) {
        throw std::invalid_argument("values before the seam: " + std::to_string(from.size()) + ", expected " +
                                    std::to_string(Axes()));
    }
    const SeamLine line(seam.poses);
    const SeamChoices choices(arm, rules.work, seam.freedom, line);
    const SeamRungs rungs(arm, rules, choices, seam, from);
    const SeamSearch search(rungs, seam.poses);
    const SeamWay way = search.Run();
    SeamResult result;
    if (way.stops.empty()) {
        result.why = Explain(search, rungs, seam.poses);
        return result;
    }
    result.cost = way.cost - rungs.StartCost(way.stops.front().values.data());
    const SeamBetween between(arm, rules);
    Deviation most;
    for (std::size_t i = 0; i < way.stops.size(); ++i) {
        const SeamStop& stop = way.stops[i];
        const bool changed = i > 0 && way.stops[i - 1].pose == stop.pose;
        between.Append(
            result.states,
            {stop.values, line.ToolAt(stop.pose, stop.choice), static_cast<int>(stop.pose), changed}, most);
    }
    result.distance = most.distance;
    result.angle = most.angle;
    return result;
}

} // namespace planning
