#pragma once

#include <cell/System.h>
#include <functional>
#include <mechanism/GrpState.h>
#include <string>
#include <vector>

namespace cell {

/// A state that was taught by hand, with the tool centre that its values give.
struct KeyState {
    std::string name;
    GrpState state;
};

/// Fills the way through some key states.
using Interpolation = std::function<std::vector<GrpState>(const std::vector<GrpState>&)>;

/// A way of one system through key states, or several such ways at once.
struct Motion {
    std::string name;
    std::string kind;
    const System* system = nullptr;
    std::vector<KeyState> keys = {};
    Interpolation interpolate = {};
    /// Positions in the cell's list of the motions that run together, each of another system; empty where
    /// this is a motion of its own.
    std::vector<std::size_t> parts = {};
};

} // namespace cell
