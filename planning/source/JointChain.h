#pragma once

#include <array>
#include <host/tools/Rigid.h>
#include <planning/Solutions.h>

namespace planning {

/// A chain of rotary joints, each about its own frame's Z, on plain numbers.
struct JointChain {
    std::size_t count = 0;
    std::array<Rigid, MaxJoints> centers; ///< frame of each joint at value zero, in the frame before it
    Rigid base;                           ///< frame in which the table starts, in the robot's base
    Rigid flange;                         ///< in the frame of the last joint

    using Frames = std::array<Rigid, MaxJoints>;

    /// Frames of all joints in the robot's base.
    void Place(const double* values, Frames& frames) const;
    Rigid FlangeAt(const double* values) const;
};

/// Columns of the geometric Jacobian at the flange: linear (mm/rad), then angular (rad/rad) rows.
using Jacobian6 = std::array<std::array<double, 6>, MaxJoints>;
void FlangeJacobian(const JointChain& chain, const double* values, Rigid& flange, Jacobian6& columns);

} // namespace planning
