#pragma once

#include <cstdint>
#include <mechanism/BenchEntity.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/PedestalEntity.h>
#include <mechanism/RobotEntity.h>
#include <vector>

namespace cell {

/// Mechanisms that one state moves: a robot, what carries it, and the benches it works at.
struct System {
    RobotEntity* robot;
    PedestalEntity* pedestal = nullptr;     ///< null where the robot stands still
    std::vector<BenchEntity*> benches = {}; ///< all with the same number of axes

    std::uint64_t Hash() const { return robot->GetRobotSystem(); }
    /// The pedestal's links that this robot's place moves with, top first.
    std::vector<const LinkRod*> PedestalAxes() const;
};

std::vector<const LinkRod*> AxesOf(const GenericEntity& entity);

/// The door to the registry of systems.
struct Registrar : GrpConfig {
    /// Enters a system. An entry of the same layout is kept, since states point at it.
    static void Register(const System& system);
};

/// Describes a robot's independent axes. In a coupled wrist the sixth of seven values is minus the fifth.
void FillCoupling(std::uint64_t hash, int dof, bool coupled);

} // namespace cell
