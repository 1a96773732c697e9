#include <cell/model/JointValues.h>
#include <cell/model/SystemValues.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>

namespace cell {

namespace {

using Axes = std::vector<const LinkRod*>;

/// Rounded so that a limit comes out as its file said it.
std::string Shown(double value, const LinkRod& axis) {
    constexpr int Decimals = 10;
    return Slides(axis) ? Rounded(value, Decimals) : Degrees(value);
}

std::vector<JsonNode> RequireCount(const JsonNode& list, std::size_t count, const std::string& entity) {
    std::vector<JsonNode> items = list.Items("numbers");
    if (items.size() != count) {
        list.Refuse(std::to_string(items.size()) + " values",
                    std::to_string(count) + ", one for each axis of " + entity);
    }
    return items;
}

/// Takes one number an axis from the file into radians or mm.
using AxisReader = double (*)(const JsonNode& node, const LinkRod& axis);

double ReadValue(const JsonNode& node, const LinkRod& axis) {
    const double value = node.Number() * FileUnit(axis);
    const auto& [low, high] = axis.GetLimit();
    if (!(value >= low && value <= high)) {
        node.Refuse(std::string(Slides(axis) ? "mm" : "degrees") + " from " + Shown(low, axis) + " to " +
                    Shown(high, axis));
    }
    return value;
}

double ReadStep(const JsonNode& node, const LinkRod& axis) { return node.Positive() * FileUnit(axis); }

/// What stands beside the robot in a system, in the order of the layout.
void AppendExternal(const JsonNode& item, const System& system, AxisReader read,
                    std::vector<double>& values) {
    const auto append = [&](const JsonNode& list, const Axes& axes, const std::string& entity) {
        const std::vector<JsonNode> items = RequireCount(list, axes.size(), entity);
        for (std::size_t i = 0; i < axes.size(); ++i) {
            values.push_back(read(items[i], *axes[i]));
        }
    };
    if (system.pedestal != nullptr) {
        append(item.At("pedestal"), system.PedestalAxes(), system.pedestal->GetName());
    }
    if (!system.benches.empty()) {
        const JsonNode list = item.At("benches");
        const std::vector<JsonNode> benches = list.Items("lists of values");
        if (benches.size() != system.benches.size()) {
            list.Refuse(std::to_string(benches.size()) + " lists",
                        std::to_string(system.benches.size()) + ", one for each bench of the system");
        }
        for (std::size_t i = 0; i < benches.size(); ++i) {
            append(benches[i], AxesOf(*system.benches[i]), system.benches[i]->GetName());
        }
    }
}

} // namespace

std::vector<double> ReadSystemValues(const JsonNode& item, const System& system) {
    const JsonNode list = item.At("values_deg");
    const auto refuse = [&](const std::string& shown, const std::string& expected) {
        list.Refuse(shown, expected);
    };
    std::vector<double> values = FullValues(*system.robot, list.Numbers(), refuse);
    RequireInLimits(*system.robot, values, refuse);
    AppendExternal(item, system, ReadValue, values);
    return values;
}

std::vector<double> ReadSystemSteps(const JsonNode& item, const System& system) {
    const JsonNode list = item.At("steps_deg");
    std::vector<double> steps;
    for (const JsonNode& node : list.Items("steps")) {
        steps.push_back(node.Positive() * RadiansPerDegree);
    }
    const auto dof = static_cast<std::size_t>(system.robot->GetDOF(0));
    if (steps.size() != dof) {
        list.Refuse(std::to_string(steps.size()) + " steps", std::to_string(dof) + ", one for each joint");
    }
    AppendExternal(item, system, ReadStep, steps);
    return steps;
}

std::vector<const char*> ValueKeys(const System& system, const char* robotKey) {
    std::vector<const char*> keys = {robotKey};
    if (system.pedestal != nullptr) {
        keys.push_back("pedestal");
    }
    if (!system.benches.empty()) {
        keys.push_back("benches");
    }
    return keys;
}

void MoveTo(const System& system, GrpState& state) {
    const std::uint64_t hash = system.Hash();
    if (system.pedestal != nullptr) {
        system.pedestal->SetCurrentValue(state.GetValues(Pedestal), hash);
        system.pedestal->ForwardTrsf(hash, true, true);
    }
    MoveTo(*system.robot, state.GetValues(Robot));
    for (std::size_t i = 0; i < system.benches.size(); ++i) {
        BenchEntity& bench = *system.benches[i];
        bench.SetCurrentValue(state.GetValues(static_cast<EntityName>(Bench + i)), hash);
        bench.ForwardTrsf(hash, true, true);
    }
}

void ResetSystem(const System& system) {
    GrpState zero(system.Hash());
    MoveTo(system, zero);
}

} // namespace cell
