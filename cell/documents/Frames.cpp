#include <cell/documents/Frames.h>
#include <cmath>

namespace cell {

namespace {

/// A coordinate axis as a file writes it differs from the exact one by rounding alone.
constexpr double SameDirection = 1e-12;

bool IsSame(const Vec& a, const Vec& b) { return Length(a - b) <= SameDirection; }

} // namespace

JointFrame FrameOfJoint(const Vec& origin, const Vec& axis) {
    const Vec x{1, 0, 0};
    const Vec y{0, 1, 0};
    const Vec z{0, 0, 1};
    if (IsSame(axis, x) || IsSame(axis, y) || IsSame(axis, z)) {
        const JointType type = IsSame(axis, x) ? JointX : IsSame(axis, y) ? JointY : JointZ;
        return {FromColumns(x, y, z, origin), type};
    }
    // Y as the reference keeps oblique wrists, which lie in the XZ plane, free of a sideways turn.
    const bool alongY = std::abs(axis[1]) > std::abs(axis[0]) + std::abs(axis[2]);
    const Vec newX = Unit(axis);
    const Vec newZ = Unit(Cross(newX, alongY ? z : y));
    return {FromColumns(newX, Cross(newZ, newX), newZ, origin), JointX};
}

Rigid FrameOfFlange(const Vec& origin, const Vec& x, const Vec& z) {
    const Vec newZ = Unit(z);
    const Vec newY = Unit(Cross(newZ, x));
    return FromColumns(Cross(newY, newZ), newY, newZ, origin);
}

} // namespace cell
