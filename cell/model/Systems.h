#pragma once

#include <cell/System.h>
#include <cell/text/Units.h>
#include <cstdint>
#include <mechanism/GrpConfig.h>
#include <vector>

namespace cell {

/// Whether the axis slides (mm) or turns (rad; degrees in files).
inline bool Slides(const LinkRod& axis) { return axis.jointType == JointLinear; }
/// What one unit of a file is worth on the axis: 1 where it slides, else radians per degree.
inline double FileUnit(const LinkRod& axis) { return Slides(axis) ? 1.0 : RadiansPerDegree; }

std::vector<const LinkRod*> AxesOf(const GenericEntity& entity);

/// The door to the registry of systems.
struct Registrar : GrpConfig {
    /// Enters a system. An entry of the same layout is kept, since states point at it.
    static void Register(const System& system);
};

/// Describes a robot's independent axes. In a coupled wrist the sixth of seven values is minus the fifth.
void FillCoupling(std::uint64_t hash, int dof, bool coupled);

} // namespace cell
