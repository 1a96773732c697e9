#pragma once

#include <cell/documents/Frames.h>
#include <cell/documents/JsonNode.h>
#include <string>
#include <vector>

namespace cell {

/// One joint at value zero, in the robot's frame.
struct ArmJoint {
    Triple origin; ///< mm
    Triple axis;   ///< unit, positive sense
    double minDeg;
    double maxDeg;
};

/// A robot arm as plain facts.
struct ArmDescription {
    std::string name;
    int structure; ///< 0 not stated, 1 and 2 the two arm structures
    bool coupled;  ///< the sixth of its seven values is minus the fifth
    std::vector<ArmJoint> joints;
    Rigid flange;  ///< in the robot's frame at zero, Z along the last joint's axis
    JsonNode node; ///< where it was read
};

/// A direction of length 1.
Triple ReadDirection(const JsonNode& node);
/// "origin_mm", "x_axis" and "z_axis", which are perpendicular.
Rigid ReadFlange(const JsonNode& node);

/// @throws InputError for whatever is missing or makes no arm.
ArmDescription ReadArm(const JsonNode& node);

} // namespace cell
