#pragma once

#include <cell/Export.h>
#include <cstdint>
#include <mechanism/BenchEntity.h>
#include <mechanism/PedestalEntity.h>
#include <mechanism/RobotEntity.h>
#include <vector>

namespace cell {

/// Mechanisms that one state moves: a robot, what carries it, and the benches it works at.
struct CELL_EXPORT System {
    RobotEntity* robot;
    PedestalEntity* pedestal = nullptr;     ///< null where the robot stands still
    std::vector<BenchEntity*> benches = {}; ///< all with the same number of axes

    std::uint64_t Hash() const { return robot->GetRobotSystem(); }
    /// The pedestal's links that this robot's place moves with, top first.
    std::vector<const LinkRod*> PedestalAxes() const;
};

} // namespace cell
