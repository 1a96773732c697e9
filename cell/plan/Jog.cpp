#include <algorithm>
#include <cell/model/JointValues.h>
#include <cell/model/SystemValues.h>
#include <cell/plan/Jog.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>

namespace cell {

namespace {

constexpr double FinePart = 0.1;
/// The sixth value of a coupled wrist follows from the fifth.
constexpr std::size_t Leader = 4;
constexpr std::size_t Follower = 5;

std::string Shown(double value, const LinkRod& link) { return Rounded(value / FileUnit(link), 1); }

} // namespace

Jog::Jog(const Cell& cell_) : cell(cell_) {
    for (const System& system : cell.Systems()) {
        const std::size_t number = states.size();
        states.emplace_back(system.Hash());
        Add(number, Robot, system.robot->GetName(), AxesOf(*system.robot));
        if (system.pedestal != nullptr) {
            Add(number, Pedestal, system.pedestal->GetName(), system.PedestalAxes());
        }
        for (std::size_t i = 0; i < system.benches.size(); ++i) {
            Add(number, static_cast<EntityName>(Bench + i), system.benches[i]->GetName(),
                AxesOf(*system.benches[i]));
        }
    }
    for (std::size_t i = 0; i < states.size(); ++i) {
        AddTool(i);
    }
}

void Jog::Add(std::size_t system, EntityName entity, const std::string& owner,
              const std::vector<const LinkRod*>& links) {
    const bool coupled = entity == Robot && cell.Systems()[system].robot->IsCouplingRobot();
    for (std::size_t i = 0; i < links.size(); ++i) {
        if (!coupled || i != Follower) {
            axes.push_back({system, entity, i, owner, links[i]});
        }
    }
}

void Jog::Next(int offset) {
    if (HasAxes()) {
        const auto count = static_cast<int>(axes.size());
        chosen = static_cast<std::size_t>((static_cast<int>(chosen) + offset % count + count) % count);
        obstacle.clear();
    }
}

void Jog::Choose(std::size_t axis) {
    if (axis < axes.size()) {
        chosen = axis;
        obstacle.clear();
    }
}

void Jog::Move(int steps, bool fine) {
    if (!HasAxes()) {
        return;
    }
    const Axis& axis = axes[chosen];
    if (axis.link == nullptr) {
        MoveTool(axis, steps * (fine ? FinePart : 1));
        return;
    }
    const System& system = cell.Systems()[axis.system];
    GrpState& state = states[axis.system];
    std::vector<double> values = state.GetValues(axis.entity);
    const double step = (Slides(*axis.link) ? JogSlide : JogTurn) * (fine ? FinePart : 1);
    const auto& [low, high] = axis.link->GetLimit();
    values[axis.place] = std::clamp(values[axis.place] + steps * step, low, high);
    if (axis.entity == Robot && system.robot->IsCouplingRobot() && axis.place == Leader) {
        values[Follower] = -values[Leader];
    }
    state.SetValues(axis.entity, values);
    MoveTo(system, state);
}

void Jog::Reset() {
    for (std::size_t i = 0; i < states.size(); ++i) {
        states[i] = GrpState(states[i].GetSystem());
        MoveTo(cell.Systems()[i], states[i]);
    }
}

void Jog::TakeOver(PlannedMotion& planned, std::size_t step) {
    for (GrpState& state : states) {
        if (!planned.contexts.empty()) {
            if (planned.contexts[step].HasSystem(state.GetSystem())) {
                state = planned.contexts[step].GetValues(state.GetSystem());
            }
        } else if (planned.states[step].GetSystem() == state.GetSystem()) {
            state = planned.states[step];
        }
    }
}

std::string Jog::Text() {
    if (!HasAxes()) {
        return "nothing to move";
    }
    const Axis& axis = axes[chosen];
    if (axis.link == nullptr) {
        return ToolText(axis);
    }
    const auto& [low, high] = axis.link->GetLimit();
    return axis.owner + " axis " + std::to_string(axis.place + 1) + ": " +
           Shown(states[axis.system].GetValues(axis.entity)[axis.place], *axis.link) +
           (Slides(*axis.link) ? " mm (" : " deg (") + Shown(low, *axis.link) + " to " +
           Shown(high, *axis.link) + ")";
}

} // namespace cell
