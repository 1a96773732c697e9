#pragma once

#include <mechanism/GrpState.h>

namespace mechanism_detail {

/// Access to a state's internals for functions of the library that create many states.
struct StateAccess {
    /// Binds a default state to a layout that the caller has looked up. The values are not set.
    static void Bind(GrpState& state, std::uint64_t system, const GrpConfig* config) {
        state.Bind(system, config);
    }
    /// Exchanges two states without copying poses or text, which a move would copy.
    static void Swap(GrpState& a, GrpState& b) noexcept { a.Swap(b); }
    /// Number of values; 0 for a state that is bound to no system or was moved from.
    static int CountValues(const GrpState& state) { return state.CountValues(); }
    /// Whether the state has a buffer with that many values.
    static bool HasValues(const GrpState& state, int count) {
        return state.values != nullptr && state.CountValues() >= count;
    }
};

} // namespace mechanism_detail
