#include <mechanism/InterpHandle.h>

#include "Checked.h"
#include "Count.h"
#include "GrpState/StateAccess.h"

#include <algorithm>
#include <cmath>
#include <gp_Trsf.hxx>
#include <gp_TrsfNLerp.hxx>
#include <host/tools/gpHandle.h>
#include <utility>

using namespace mechanism_detail;

namespace {

constexpr const char* ByStep = "InterpolationPts";

void RequirePair(const GrpState& a, const GrpState& b, const char* function) {
    if (!StateAccess::HasValues(a, 0) || StateAccess::CountValues(a) != a.GetContextDof() ||
        !StateAccess::HasValues(b, a.GetContextDof())) {
        throw std::invalid_argument(
            std::string(function) +
            ": a state without values or with fewer than the first, expected two of one system");
    }
}

/// Number of whole steps on the axis with the most.
int CountParts(const GrpState& a, const GrpState& b, const std::vector<double>& steps) {
    RequirePair(a, b, ByStep);
    if (std::cmp_less(steps.size(), a.GetContextDof())) {
        throw std::invalid_argument(std::string(ByStep) + ": " + std::to_string(steps.size()) +
                                    " steps, expected " + std::to_string(a.GetContextDof()));
    }
    int parts = 0;
    for (int i = 0; i < a.GetContextDof(); ++i) {
        const double change = b.GetValuesPtr()[i] - a.GetValuesPtr()[i];
        parts =
            std::max(parts, Count(Quotient(std::abs(change), steps[static_cast<std::size_t>(i)]), ByStep));
    }
    return parts;
}

/// Memory of one state: its fields, its values and its poses.
std::size_t BytesOf(const GrpState& state) {
    return sizeof(GrpState) + static_cast<std::size_t>(state.GetContextDof()) * sizeof(double) +
           static_cast<std::size_t>(state.GetRobotNum()) * sizeof(LocEuler);
}

/// Appends the states strictly between a and b.
void AppendInterior(const GrpState& a, const GrpState& b, int parts, std::vector<GrpState>& states) {
    if (parts < 2) {
        return;
    }
    const GrpConfig* const config = GrpConfig::GetGrpConfig(a.GetSystem()).get();
    const auto count = static_cast<std::size_t>(a.GetContextDof());
    std::vector<double> change(count);
    for (std::size_t i = 0; i < count; ++i) {
        change[i] = (b.GetValuesPtr()[i] - a.GetValuesPtr()[i]) / parts;
    }
    for (int k = 1; k < parts; ++k) {
        GrpState& state = states.emplace_back();
        StateAccess::Bind(state, a.GetSystem(), config);
        for (std::size_t i = 0; i < count; ++i) {
            state.GetValuesPtr()[i] = a.GetValuesPtr()[i] + k * change[i];
        }
    }
}

/// Moves a state's values by the given fraction of the way towards another's.
void BlendValues(GrpState& state, const GrpState& to, double t) {
    double* const values = state.GetValuesPtr();
    for (int i = 0; i < state.GetContextDof(); ++i) {
        values[i] += (to.GetValuesPtr()[i] - values[i]) * t;
    }
}

} // namespace

std::vector<GrpState> InterpHandle::InterpolationPts(const GrpState& a, const GrpState& b,
                                                     const std::vector<double>& steps) {
    const int parts = CountParts(a, b, steps);
    RequireMemory(parts, BytesOf(a));
    std::vector<GrpState> states;
    states.reserve(static_cast<std::size_t>(std::max(parts, 1)) + 1);
    states.push_back(a);
    AppendInterior(a, b, parts, states);
    states.push_back(b);
    return states;
}

std::vector<GrpState> InterpHandle::InterpolationPts(const std::vector<GrpState>& states,
                                                     const std::vector<double>& steps) {
    At(states, 0);
    std::vector<GrpState> chain;
    if (states.size() < 2) {
        return chain;
    }
    std::vector<int> parts;
    std::size_t total = 1;
    for (std::size_t i = 0; i + 1 < states.size(); ++i) {
        parts.push_back(CountParts(states[i], states[i + 1], steps));
        total += static_cast<std::size_t>(std::max(parts.back(), 1));
    }
    RequireMemory(static_cast<double>(total), BytesOf(states.front()));
    // Reserved once: states are expensive to move.
    chain.reserve(total);
    for (std::size_t i = 0; i + 1 < states.size(); ++i) {
        chain.push_back(states[i]);
        AppendInterior(states[i], states[i + 1], parts[i], chain);
    }
    chain.push_back(states.back());
    return chain;
}

std::vector<GrpState> InterpHandle::InterpolationPtsByPosGap(const GrpState& a, const GrpState& b,
                                                             double gap) {
    RequirePair(a, b, "InterpolationPtsByPosGap");
    const LocEuler& from = a.GetLocEuler(0);
    const LocEuler& to = b.GetLocEuler(0);
    const double wholeDistance = std::trunc(from.location.Distance(to.location));
    const int between = Count(Quotient(wholeDistance, gap), "InterpolationPtsByPosGap");
    RequireMemory(between, BytesOf(a));
    const gp_TrsfNLerp blend(gpHandle::EulerToTrsf(from), gpHandle::EulerToTrsf(to));

    std::vector<GrpState> states;
    states.reserve(static_cast<std::size_t>(between) + 2);
    states.push_back(a);
    for (int k = 1; k <= between; ++k) {
        const double t = k / (between + 1.0);
        GrpState& state = states.emplace_back(a);
        BlendValues(state, b, t);
        gp_Trsf pose;
        blend.Interpolate(t, pose);
        state.SetLocEuler(0, gpHandle::TrsfToEuler(pose));
    }
    states.push_back(b);
    return states;
}

GrpState InterpHandle::InterpolationScalePts(const GrpState& a, const GrpState& b, double t) {
    RequirePair(a, b, "InterpolationScalePts");
    GrpState state(a);
    BlendValues(state, b, t);
    return state;
}
