#pragma once

#include <utility>

/// How a joint moves. X, Y and Z turn about that axis of the link's own frame; Rotary turns about the link's
/// joint axis and Linear slides along it. A joint of any other number does not move.
enum JointType : int { JointFixed = 0, JointX = 3, JointY = 4, JointZ = 5, JointRotary = 7, JointLinear = 8 };

/// Kind of mechanism, written as the JSON key "type".
enum MechanismType : int {
    MechanismGeneric = 0,
    MechanismRobot = 1,
    MechanismPedestal = 2,
    MechanismBench = 3,
    MechanismTool = 4,
    MechanismWorkpiece = 5
};

/// Minimum then maximum of a joint: radians, or millimetres where the joint is linear.
using AxisRange = std::pair<double, double>;
