#pragma once

#include "JointChain.h"
#include "Vec.h"

#include <planning/InverseKinematics.h>
#include <utility>
#include <variant>
#include <vector>

namespace planning {

// All kinds are described in the arm's canonical frame: Z along axis 1, Y along axis 2, the origin on axis 1.
// A pose is given as the displacement G of the flange from its pose at zero, expressed in that frame.

/// Joints 2 and 3 in the arm's plane, at joint values zero: from joint 2 to joint 3 and from joint 3 to the
/// wrist.
struct PlaneArm {
    Planar shoulder; ///< joint 2, from axis 1
    Planar upper;
    Planar fore;
    double elbowSense = 1; ///< +1 where axis 3 points as axis 2, else -1
    // Derived from these two vectors:
    double upperLength = 0, foreLength = 0;
    Planar foreFromUpper; ///< direction of the forearm relative to the upper arm, at zero
    double foreAngle = 0; ///< its angle

    double Reach() const { return upperLength + foreLength; }
};

/// A wrist of three axes that meet, neighbours at right angles.
struct OrdinaryArm {
    PlaneArm plane;
    double lateral;            ///< of the wrist centre, along axis 2
    Vec across, fifth, fourth; ///< at zero: perpendicular to axes 4 and 5, axis 5, axis 4
    double offset;             ///< value 5 at which axes 4 and 6 are one line
};

/// Axis 4 parallel to axes 2 and 3, axis 5 at right angles to it, axis 6 to axis 5.
struct ParallelArm {
    PlaneArm plane; ///< its wrist is joint 4
    Planar hand;    ///< from joint 4 to where axes 5 and 6 meet
    double lateral; ///< of that point, along axis 2
    Vec fifth, sixth;
    double fourthSense;
    double offset; ///< value 5 at which axis 6 points as axis 2
};

/// A coupled wrist at one value 5, in the frame of link 4 (components along axis 4, Y, and axis 4 x Y):
/// offset from the point where axes 4 and 5 meet to the tip, and direction of the last axis.
struct WristAt {
    Vec offset, direction;
};

/// Values 5 of the coarse search.
inline constexpr std::size_t CoupledNodes = 32;

/// Axes 4 and 5 meet, axes 6 and 7 meet, value 6 is minus value 5.
struct CoupledArm {
    PlaneArm plane;    ///< its wrist is where axes 4 and 5 meet
    PlaneArm straight; ///< its wrist is the tip with value 5 at zero
    Vec last;          ///< axis 7 at zero
    Vec fourth, fifth, sixth;
    Vec normal;       ///< some direction perpendicular to axis 7 at zero
    Planar forward;   ///< axis 4 at zero, in the arm's plane
    Planar foreAlong; ///< the forearm, axis 4 along the real axis
    double inverseUpper;
    /// Multiplied by 1, cos, sin, cos^2 and cos sin of value 5, these add up to a WristAt.
    std::array<Vec, 5> offset, direction;
    std::array<Planar, CoupledNodes> turns;  ///< cosine and sine of NodeOf(0), NodeOf(1), ...
    std::array<WristAt, CoupledNodes> nodes; ///< at the same values

    WristAt At(double q) const;
    static double NodeOf(std::size_t i);
};

struct ArmModel {
    JointChain chain;
    std::array<std::pair<double, double>, MaxJoints> limits;
    bool coupled = false;
    bool exact = true; ///< the table is of its kind to rounding; else solutions are refined
    double reach = 1;  ///< characteristic length, mm
    double front = 1;  ///< +1 where the arm leans towards the canonical X at zero, else -1
    double bend = 1;   ///< +1 where value 5 counts as joint 2 does at zero, else -1
    Rigid toCanonical; ///< from the robot's base
    /// Frame at the point of the wrist that a pose determines (where the last axes meet), relative to the
    /// flange. At zero its axes are those of the canonical frame, for an ordinary arm those of its last
    /// joint.
    Rigid wristInFlange;
    std::variant<OrdinaryArm, ParallelArm, CoupledArm> kind;
};

/// Determines the kind from the table's geometry.
/// @throws std::invalid_argument saying what does not fit.
ArmModel MakeModel(const ArmTable& table);

} // namespace planning
