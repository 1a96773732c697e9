#pragma once

#include "JointChain.h"
#include "Vec.h"

#include <planning/InverseKinematics.h>
#include <utility>
#include <variant>
#include <vector>

namespace planning {

// Every kind is described in the arm's canonical frame: Z along axis 1, Y along axis 2, the origin on axis 1.
// A pose is given as the displacement G from the flange's place at zero, expressed in that frame.

/// Joints 2 and 3 in the arm's plane, as lengths at zero: joint 2 to joint 3, joint 3 to the wrist.
struct PlaneArm {
    Planar shoulder; ///< joint 2, from axis 1
    Planar upper;
    Planar fore;
    double elbowSense = 1; ///< +1 where axis 3 points as axis 2, else -1
    // Derived from the two lengths:
    double upperLength = 0, foreLength = 0;
    Planar foreFromUpper; ///< direction of the forearm seen from the upper arm, at zero
    double foreAngle = 0; ///< its angle

    double Reach() const { return upperLength + foreLength; }
};

/// Three wrist axes that meet, square to each other in turn.
struct OrdinaryArm {
    PlaneArm plane;
    double lateral;            ///< of the wrist centre, along axis 2
    Vec across, fifth, fourth; ///< at zero: the square to axes 4 and 5, axis 5, axis 4
    double offset;             ///< value 5 at which axes 4 and 6 are one line
};

/// Axis 4 parallel to axes 2 and 3, axis 5 square to it, axis 6 square to axis 5.
struct ParallelArm {
    PlaneArm plane; ///< its wrist is joint 4
    Planar hand;    ///< from joint 4 to where axes 5 and 6 meet
    double lateral; ///< of that point, along axis 2
    Vec fifth, sixth;
    double fourthSense;
    double offset; ///< value 5 at which axis 6 points as axis 2
};

/// Of a coupled wrist at one value 5: offset from where axes 4 and 5 meet to the tip, and direction of the
/// last axis, in link 4; components along axis 4, Y, and axis 4 x Y.
struct WristAt {
    Vec offset, direction;
};

/// Places at which the search for value 5 looks at first.
inline constexpr std::size_t CoupledNodes = 32;

/// Axes 4 and 5 meet, axes 6 and 7 meet, value 6 is minus value 5.
struct CoupledArm {
    PlaneArm plane;    ///< its wrist is where axes 4 and 5 meet
    PlaneArm straight; ///< its wrist is the tip with value 5 at zero
    Vec last;          ///< axis 7 at zero
    Vec fourth, fifth, sixth;
    Vec normal;       ///< some direction square to axis 7 at zero
    Planar forward;   ///< axis 4 at zero, in the arm's plane
    Planar foreAlong; ///< the forearm, axis 4 along the real axis
    double inverseUpper;
    /// Sums of these with 1, cos, sin, cos^2 and cos sin of value 5 make a WristAt.
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
    bool exact = true; ///< the table is of its kind to rounding; else solutions are polished
    double reach = 1;  ///< characteristic length, mm
    double front = 1;  ///< +1 where the arm leans towards the canonical X at zero, else -1
    double bend = 1;   ///< +1 where value 5 counts as joint 2 does at zero, else -1
    Rigid toCanonical; ///< from the robot's base
    /// Frame at the wrist's point that a pose fixes (where the last axes meet), seen from the flange. Its
    /// axes are at zero those of the canonical frame; of an ordinary arm those of its last joint.
    Rigid wristInFlange;
    std::variant<OrdinaryArm, ParallelArm, CoupledArm> kind;
};

/// Reads the kind off the table's geometry.
/// @throws std::invalid_argument saying what does not fit.
ArmModel MakeModel(const ArmTable& table);

} // namespace planning
