#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <host/tools/Rigid.h>

/// What several rooms must know of arms in the same way.
namespace ArmFacts {

/// Index of the coupled wrist's value that the follower depends on, from 0.
inline constexpr std::size_t WristLeader = 4;
/// Index of the coupled wrist's value that is minus the leader, from 0.
inline constexpr std::size_t WristFollower = 5;

/// Frame of a table row (a mm, alpha rad, d mm, theta rad) at a joint value (rad), in the frame of the row
/// before. Proximal convention: RotX(alpha) * TransX(a) * RotZ(theta + value) * TransZ(d).
inline Rigid FrameOfRow(const std::array<double, 4>& row, double value = 0) {
    const auto& [a, alpha, d, theta] = row;
    const double ca = std::cos(alpha);
    const double sa = std::sin(alpha);
    const double ct = std::cos(theta + value);
    const double st = std::sin(theta + value);
    return {{ct, -st, 0, ca * st, ca * ct, -sa, sa * st, sa * ct, ca}, {a, -sa * d, ca * d}};
}

/// Frame that an arm's chain starts from, in the robot's: turned by half a turn about Z for arm structure 1.
Rigid ChainBase(int structure);

} // namespace ArmFacts
