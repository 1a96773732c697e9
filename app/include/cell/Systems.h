#pragma once

#include <cstdint>
#include <mechanism/GrpConfig.h>

namespace cell {

/// The door to the registry of systems.
struct Registrar : GrpConfig {
    /// Enters a system of one robot. An entry of the same layout is kept, since states point at it.
    static void RegisterRobot(std::uint64_t hash, int dof);
};

/// Describes a robot's independent axes. In a coupled wrist the sixth of seven values is minus the fifth.
void FillCoupling(std::uint64_t hash, int dof, bool coupled);

} // namespace cell
