#pragma once

#include <mechanism/GrpState.h>

namespace mechanism_detail {

/// What the library's own makers of many states may do to one.
struct StateAccess {
    /// Binds a default state to a layout that was looked up once for all of them. The values are not set.
    static void Bind(GrpState& state, std::uint64_t system, const GrpConfig* config) {
        state.Bind(system, config);
    }
    /// Exchanges two states without copying poses or text, as moving them would.
    static void Swap(GrpState& a, GrpState& b) noexcept { a.Swap(b); }
    /// Number of values that there are; 0 for a state that is bound to no system or was moved from.
    static int CountValues(const GrpState& state) { return state.CountValues(); }
    /// Whether the state has a buffer, and that many values in it.
    static bool HasValues(const GrpState& state, int count) {
        return state.values != nullptr && state.CountValues() >= count;
    }
};

} // namespace mechanism_detail
