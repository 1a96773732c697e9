#include <algorithm>
#include <cell/Kinds.h>
#include <cell/SystemValues.h>
#include <cell/Text.h>
#include <cmath>
#include <mechanism/InterpHandle.h>

namespace cell {

namespace {

/// More states in one motion are a slip of the decimal point, and would not fit into memory.
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

std::vector<GrpState> FillGaps(const std::vector<GrpState>& states, double gap) {
    std::vector<GrpState> filled = {states.front()};
    for (std::size_t i = 0; i + 1 < states.size(); ++i) {
        const auto piece = InterpHandle::InterpolationPtsByPosGap(states[i], states[i + 1], gap);
        filled.insert(filled.end(), piece.begin() + 1, piece.end());
    }
    return filled;
}

Interpolation ReadTcpGap(const JsonNode& item, const std::vector<KeyState>& keys, const System& /*system*/) {
    item.OnlyKeys({"name", "kind", "states", "gap_mm"});
    const JsonNode node = item.At("gap_mm");
    const double gap = node.Positive();
    double count = 0;
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        count += Distance(keys[i].state, keys[i + 1].state) / gap;
    }
    RequireReasonableCount(node, count);
    return [gap](const std::vector<GrpState>& states) { return FillGaps(states, gap); };
}

} // namespace

const std::map<std::string, MotionReader>& MotionKinds() {
    static const std::map<std::string, MotionReader> kinds = {{"joint_steps", ReadJointSteps},
                                                              {"tcp_gap", ReadTcpGap}};
    return kinds;
}

} // namespace cell
