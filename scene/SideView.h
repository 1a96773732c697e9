#pragma once

#include <array>
#include <mechanism/RobotEntity.h>
#include <string>
#include <vector>

namespace cell {

/// A robot and its tool seen from the side, as filled triangles: x to the right, z up, both in the robot's
/// own frame, mm. A robot whose tool centre is behind its axis is turned about it to face right.
struct SideView {
    struct Patch {
        std::array<double, 3> colour;                 ///< red, green, blue from 0 to 1, shaded
        std::vector<std::array<double, 6>> triangles; ///< x, z of three corners, all turning the same way
    };
    /// The triangles of one body, by shade; bodies from the back to the front.
    std::vector<std::vector<Patch>> bodies;
    double left = 0, right = 0, bottom = 0, top = 0;
    std::array<double, 2> toolCentre{}; ///< radius from joint 1 and height, mm
};

SideView SeenFromTheSide(RobotEntity& robot);

} // namespace cell
