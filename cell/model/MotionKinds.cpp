#include <algorithm>
#include <cell/model/Kinds.h>
#include <cell/model/LineMotion.h>
#include <cell/model/SystemValues.h>
#include <cell/text/Text.h>
#include <cmath>
#include <mechanism/InterpHandle.h>

namespace cell {

namespace {

/// More states in one motion are taken for an input error, and would not fit into memory.
constexpr double MostStates = 1e6;

void RequireReasonableCount(const JsonNode& parameter, double count) {
    if (!(count <= MostStates)) {
        parameter.Refuse("steps that fill the motion with at most " + Rounded(MostStates, 0) + " states");
    }
}

double StatesBetween(GrpState a, GrpState b, const std::vector<double>& steps) {
    const std::vector<double> from = a.GetValues();
    const std::vector<double> to = b.GetValues();
    double most = 0;
    for (std::size_t i = 0; i < from.size(); ++i) {
        most = std::max(most, std::abs(to[i] - from[i]) / steps[i]);
    }
    return most;
}

double Distance(const GrpState& a, const GrpState& b) {
    return a.GetLocEuler(0).location.Distance(b.GetLocEuler(0).location);
}

Interpolation ReadJointSteps(const JsonNode& item, const std::vector<KeyState>& keys, const System& system) {
    std::vector<const char*> known = ValueKeys(system, "steps_deg");
    known.insert(known.end(), {"name", "kind", "states"});
    item.OnlyKeys(known);
    const JsonNode node = item.At("steps_deg");
    const std::vector<double> steps = ReadSystemSteps(item, system);
    double count = 0;
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        count += StatesBetween(keys[i].state, keys[i + 1].state, steps);
    }
    RequireReasonableCount(node, count);
    return [steps](const std::vector<GrpState>& states) {
        return InterpHandle::InterpolationPts(states, steps);
    };
}

using FillLeg = std::function<std::vector<GrpState>(const GrpState& from, const GrpState& to)>;

std::vector<GrpState> FillLegs(const std::vector<GrpState>& states, const FillLeg& fill) {
    std::vector<GrpState> filled = {states.front()};
    for (std::size_t i = 0; i + 1 < states.size(); ++i) {
        const auto leg = fill(states[i], states[i + 1]);
        filled.insert(filled.end(), leg.begin() + 1, leg.end());
    }
    return filled;
}

/// A distance between tool centres that fills the motion with a reasonable number of states.
double ReadSpacing(const JsonNode& item, const char* key, const std::vector<KeyState>& keys) {
    item.OnlyKeys({"name", "kind", "states", key});
    const JsonNode node = item.At(key);
    const double spacing = node.Positive();
    double count = 0;
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        count += Distance(keys[i].state, keys[i + 1].state) / spacing;
    }
    RequireReasonableCount(node, count);
    return spacing;
}

Interpolation ReadTcpGap(const JsonNode& item, const std::vector<KeyState>& keys, const System& system) {
    const double gap = ReadSpacing(item, "gap_mm", keys);
    return [gap, &system, list = item.At("states")](const std::vector<GrpState>& states) {
        return FillLegs(states, [&](const GrpState& from, const GrpState& to) {
            std::vector<GrpState> leg = InterpHandle::InterpolationPtsByPosGap(from, to, gap);
            if (leg.size() > 2) {
                SolveLeg(list, system, leg);
            }
            return leg;
        });
    };
}

Interpolation ReadLinear(const JsonNode& item, const std::vector<KeyState>& keys, const System& system) {
    const double spacing = ReadSpacing(item, "spacing_mm", keys);
    return [spacing, &system, list = item.At("states")](const std::vector<GrpState>& states) {
        return FillLegs(states, [&](const GrpState& from, const GrpState& to) {
            return FillLine(list, system, from, to, spacing);
        });
    };
}

} // namespace

const std::map<std::string, MotionReader>& MotionKinds() {
    static const std::map<std::string, MotionReader> kinds = {
        {"joint_steps", ReadJointSteps}, {"linear", ReadLinear}, {"tcp_gap", ReadTcpGap}};
    return kinds;
}

} // namespace cell
