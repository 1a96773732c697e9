#pragma once

#include <array>
#include <cstddef>
#include <planning/Export.h>

namespace planning {

/// Maximum number of axes of one tool: six of the arm, then those of its carrier and of the work's holder.
inline constexpr std::size_t MaxAxes = 24;

/// Geometric Jacobian of a tool centre: column by column the velocity of its point (mm) and its angular
/// velocity (rad) per unit of an axis (rad, or mm where it slides), both in the world.
struct PLANNING_EXPORT Jacobian {
    std::size_t count = 0;                              ///< number of columns that are set
    std::array<std::array<double, 6>, MaxAxes> columns; ///< velocity, then angular velocity, an axis each

    /// Singular values, largest first; with fewer than six columns the last ones are 0.
    /// @param length what lengths are divided by (mm), so that they compare with angles.
    std::array<double, 6> SingularValues(double length) const;
    /// Product of the singular values (Yoshikawa's measure); 0 at a singularity.
    double Manipulability(double length) const;
};

} // namespace planning
