#include <algorithm>
#include <cell/Planner.h>
#include <cell/model/SystemValues.h>
#include <cmath>
#include <mechanism/GrpStateUtils.h>

namespace cell {

namespace {

/// Values (mm, rad) closer than this are equal for every controller.
constexpr double SameValue = 1e-6;

double LargestChange(const std::vector<double>& a, const std::vector<double>& b) {
    double largest = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        largest = std::max(largest, std::abs(b[i] - a[i]));
    }
    return largest;
}

void Apply(PlannedMotion& planned, const std::function<void()>& applied) {
    const System& system = *planned.motion->system;
    std::vector<double> before;
    for (GrpState& state : planned.states) {
        const std::vector<double> values = state.GetValues(Robot);
        MoveTo(system, state);
        const LocEuler tcp = system.robot->GetCurrentTCP();
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
    ResetSystem(system);
}

std::vector<GrpState> KeysOf(const Motion& motion) {
    std::vector<GrpState> states;
    for (const KeyState& key : motion.keys) {
        states.push_back(key.state);
    }
    return states;
}

/// Thins each leg by itself, so that a motion that reverses keeps its turning point and every key state.
std::vector<GrpState> Thinned(const std::vector<GrpState>& states, std::vector<GrpState> keys) {
    std::vector<GrpState> thinned;
    auto begin = states.begin();
    for (std::size_t i = 1; i < keys.size(); ++i) {
        const std::vector<double> wanted = keys[i].GetValues();
        const auto isKey = [&](GrpState state) { return state.GetValues() == wanted; };
        const bool last = i + 1 == keys.size();
        const auto end = last ? states.end() : std::find_if(begin + 1, states.end(), isKey) + 1;
        const auto leg = GrpStateUtils::RemoveDuplicatedStates(std::vector<GrpState>(begin, end), SameValue);
        const bool stands = leg.front().IsEqual(leg.back(), SameValue) && leg.size() == 2;
        thinned.insert(thinned.end(), leg.begin() + (thinned.empty() ? 0 : 1), leg.end() - (stands ? 1 : 0));
        begin = end - 1;
    }
    return thinned;
}

PlannedMotion PlanAlone(const Motion& motion) {
    PlannedMotion planned{&motion};
    const std::vector<GrpState> keys = KeysOf(motion);
    const std::vector<GrpState> states = motion.interpolate(keys);
    planned.states = Thinned(states, keys);
    planned.removed = states.size() - planned.states.size();
    return planned;
}

/// One context for each step of the longest motion; the others are spread so that all end together.
PlannedMotion PlanTogether(const Motion& motion, const std::vector<PlannedMotion>& plan) {
    PlannedMotion planned{&motion};
    std::size_t steps = 0;
    for (const std::size_t part : motion.parts) {
        steps = std::max(steps, plan[part].states.size());
        planned.tcpLength += plan[part].tcpLength;
        planned.jointTravel += plan[part].jointTravel;
    }
    for (std::size_t step = 0; step < steps; ++step) {
        ContextState context{Json::Value()};
        for (const std::size_t part : motion.parts) {
            const std::vector<GrpState>& states = plan[part].states;
            const GrpState& state = states[steps > 1 ? step * (states.size() - 1) / (steps - 1) : 0];
            context.ChangeSystemValues().emplace(state.GetSystem(), state);
        }
        planned.contexts.push_back(std::move(context));
    }
    std::vector<ContextState> thinned = GrpStateUtils::RemoveDuplicatedStates(planned.contexts, SameValue);
    planned.removed = planned.contexts.size() - thinned.size();
    planned.contexts = std::move(thinned);
    return planned;
}

} // namespace

std::vector<PlannedMotion> PlanMotions(const Cell& cell, const Progress& progress) {
    std::vector<PlannedMotion> plan;
    std::size_t total = 0;
    for (const Motion& motion : cell.Motions()) {
        plan.push_back(motion.parts.empty() ? PlanAlone(motion) : PlannedMotion{&motion});
        total += plan.back().states.size();
    }
    std::size_t done = 0;
    for (PlannedMotion& planned : plan) {
        if (planned.motion->parts.empty()) {
            Apply(planned, [&] {
                ++done;
                if (progress) {
                    progress(done, total);
                }
            });
        } else {
            planned = PlanTogether(*planned.motion, plan);
        }
    }
    return plan;
}

void MoveToStep(const Cell& cell, PlannedMotion& planned, std::size_t step) {
    if (planned.contexts.empty()) {
        MoveTo(*planned.motion->system, planned.states[step]);
        return;
    }
    for (auto& [hash, state] : planned.contexts[step].ChangeSystemValues()) {
        MoveTo(*cell.FindSystem(hash), state);
    }
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
        for (ContextState& context : planned.contexts) {
            motion["contexts"].append(context.ToJson());
        }
        trace["motions"].append(std::move(motion));
    }
    return trace;
}

} // namespace cell
