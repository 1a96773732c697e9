#include <mechanism/ContextState.h>

#include "Checked.h"

namespace {

constexpr double SameContextTolerance = 1e-6;

template <class Equal>
bool AllOf(const ContextState& context, const ContextState& other, Equal equal) {
    for (const auto& [system, state] : context.GetSystemValues()) {
        if (!equal(state, mechanism_detail::At(other.GetSystemValues(), system))) {
            return false;
        }
    }
    return true;
}

/// The system's state, or the first one where the context does not hold the system.
template <class States>
auto& FindOrFirst(States& states, std::uint64_t system) {
    if (states.empty()) {
        mechanism_detail::RefuseKey();
    }
    const auto found = states.find(system);
    return (found == states.end() ? states.begin() : found)->second;
}

} // namespace

ContextState::ContextState() {
    for (const auto& [system, config] : GrpConfig::GetGrpConfigList()) {
        if (config != nullptr) {
            states.try_emplace(states.end(), system, system);
        }
    }
}

const GrpState& ContextState::GetValues(std::uint64_t system) const { return FindOrFirst(states, system); }

GrpState& ContextState::ChangeValues(std::uint64_t system) { return FindOrFirst(states, system); }

void ContextState::SetValues(std::uint64_t system, const GrpState& state) {
    if (const auto found = states.find(system); found != states.end()) {
        found->second = state;
    }
}

bool ContextState::IsEqual(const ContextState& other, double /*tolerance*/) const {
    return AllOf(*this, other,
                 [](const GrpState& a, const GrpState& b) { return a.IsEqual(b, SameContextTolerance); });
}

bool ContextState::IsEqualForSimu(const ContextState& other) const {
    return AllOf(*this, other, [](const GrpState& a, const GrpState& b) { return a.IsEqualForSimu(b); });
}

bool ContextState::IsEqualForCollisonShow(const ContextState& other) const {
    return AllOf(*this, other,
                 [](const GrpState& a, const GrpState& b) { return a.IsEqualForCollisonShow(b); });
}
