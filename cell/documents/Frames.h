#pragma once

#include <array>
#include <gp_Trsf.hxx>
#include <host/tools/Rigid.h>
#include <host/workpiece/MechanismTypes.h>

namespace cell {

using Triple = std::array<double, 3>;

double Dot(const Triple& a, const Triple& b);
Triple Cross(const Triple& a, const Triple& b);
double Length(const Triple& a);
/// The vector at length 1; a zero vector is the caller's mistake.
Triple Unit(const Triple& a);
Triple Minus(const Triple& a, const Triple& b);
/// a + k * b
Triple Plus(const Triple& a, double k, const Triple& b);

/// The frame with these axes; they are taken as orthonormal.
Rigid Frame(const Triple& origin, const Triple& x, const Triple& y, const Triple& z);
Rigid Inverse(const Rigid& frame);
Triple Apply(const Rigid& frame, const Triple& point);
/// Only the rotation.
Triple Turn(const Rigid& frame, const Triple& direction);

/// The frame of a joint and the type that makes it turn about its axis.
struct JointFrame {
    Rigid frame;
    JointType type;
};
/// Parallel to the reference frame where the axis is its +X, +Y or +Z, so that simple arms keep simple
/// transforms; otherwise a frame whose X is the axis.
JointFrame FrameOfJoint(const Triple& origin, const Triple& axis);

/// A frame from its origin, Z, and an X that is only roughly perpendicular to it: Z is kept, X corrected.
Rigid FrameOfFlange(const Triple& origin, const Triple& x, const Triple& z);

} // namespace cell
