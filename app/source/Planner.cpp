#include <algorithm>
#include <cell/JointValues.h>
#include <cell/Planner.h>
#include <cmath>

namespace cell {

namespace {

double LargestChange(const std::vector<double>& a, const std::vector<double>& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        largest = std::max(largest, std::abs(b[i] - a[i]));
    }
    return largest;
}

void Apply(PlannedMotion& planned, const std::function<void()>& applied) {
    RobotEntity& robot = *planned.motion->robot;
    std::vector<double> before;
    for (GrpState& state : planned.states) {
        const std::vector<double> values = state.GetValues(Robot);
        MoveTo(robot, values);
        const LocEuler tcp = robot.GetCurrentTCP();
        if (state.GetLocEuler(0) == LocEuler()) {
            state.SetLocEuler(0, tcp);
        }
        if (!planned.tcpPath.empty()) {
            planned.tcpLength += planned.tcpPath.back().Distance(tcp.location);
            planned.jointTravel += LargestChange(before, values);
        }
        planned.tcpPath.push_back(tcp.location);
        before = values;
        applied();
    }
    robot.Reset();
}

std::vector<GrpState> KeysOf(const Motion& motion) {
    std::vector<GrpState> states;
    for (const KeyState& key : motion.keys) {
        states.push_back(key.state);
    }
    return states;
}

} // namespace

std::vector<PlannedMotion> PlanMotions(const Cell& cell, const Progress& progress) {
    std::vector<PlannedMotion> plan;
    std::size_t total = 0;
    for (const Motion& motion : cell.Motions()) {
        PlannedMotion planned;
        planned.motion = &motion;
        planned.states = motion.interpolate(KeysOf(motion));
        total += planned.states.size();
        plan.push_back(std::move(planned));
    }
    std::size_t done = 0;
    for (PlannedMotion& planned : plan) {
        Apply(planned, [&] { progress(++done, total); });
    }
    return plan;
}

Json::Value TraceToJson(const Cell& cell, std::vector<PlannedMotion>& plan) {
    Json::Value trace(Json::objectValue);
    trace["cell"] = cell.Name();
    trace["motions"] = Json::Value(Json::arrayValue);
    for (PlannedMotion& planned : plan) {
        Json::Value motion(Json::objectValue);
        motion["name"] = planned.motion->name;
        for (GrpState& state : planned.states) {
            motion["states"].append(state.ToJson());
        }
        trace["motions"].append(std::move(motion));
    }
    return trace;
}

} // namespace cell
