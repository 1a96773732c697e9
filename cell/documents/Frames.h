#pragma once

#include <host/tools/Vec.h>
#include <host/workpiece/MechanismTypes.h>

namespace cell {

using namespace spatial;

/// The frame of a joint and the type that makes it turn about its axis.
struct JointFrame {
    Rigid frame;
    JointType type;
};
/// Parallel to the reference frame where the axis is its +X, +Y or +Z, so that simple arms keep simple
/// transforms; otherwise a frame whose X is the axis.
JointFrame FrameOfJoint(const Vec& origin, const Vec& axis);

/// A frame from its origin, Z, and an X that is only roughly perpendicular to it: Z is kept, X corrected.
Rigid FrameOfFlange(const Vec& origin, const Vec& x, const Vec& z);

} // namespace cell
