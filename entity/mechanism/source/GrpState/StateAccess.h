#pragma once

#include <mechanism/GrpState.h>

namespace mechanism_detail {

/// What the library's own makers of many states may do to one.
struct StateAccess {
    /// Binds a default state to a layout that was looked up once for all of them. The values are not set.
    static void Bind(GrpState& state, std::uint64_t system, const GrpConfig* config) {
        state.Bind(system, config);
    }
};

} // namespace mechanism_detail
