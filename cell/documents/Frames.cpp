#include <cell/documents/Frames.h>
#include <cmath>

namespace cell {

namespace {

/// A coordinate axis as a file writes it differs from the exact one by rounding alone.
constexpr double SameDirection = 1e-12;

bool IsSame(const Triple& a, const Triple& b) { return Length(Minus(a, b)) <= SameDirection; }

} // namespace

double Dot(const Triple& a, const Triple& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Triple Cross(const Triple& a, const Triple& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Length(const Triple& a) { return std::hypot(a[0], a[1], a[2]); }

Triple Unit(const Triple& a) {
    const double length = Length(a);
    return {a[0] / length, a[1] / length, a[2] / length};
}

Triple Minus(const Triple& a, const Triple& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }

Triple Plus(const Triple& a, double k, const Triple& b) {
    return {a[0] + k * b[0], a[1] + k * b[1], a[2] + k * b[2]};
}

Rigid Frame(const Triple& origin, const Triple& x, const Triple& y, const Triple& z) {
    return {{x[0], y[0], z[0], x[1], y[1], z[1], x[2], y[2], z[2]}, {origin[0], origin[1], origin[2]}};
}

Rigid Inverse(const Rigid& frame) {
    const double* r = frame.r;
    Rigid inverse{{r[0], r[3], r[6], r[1], r[4], r[7], r[2], r[5], r[8]}, {0, 0, 0}};
    const Triple back = Turn(inverse, {frame.p[0], frame.p[1], frame.p[2]});
    for (std::size_t i = 0; i < 3; ++i) {
        inverse.p[i] = -back[i];
    }
    return inverse;
}

Triple Apply(const Rigid& frame, const Triple& point) {
    return Plus({frame.p[0], frame.p[1], frame.p[2]}, 1.0, Turn(frame, point));
}

Triple Turn(const Rigid& frame, const Triple& d) {
    const double* r = frame.r;
    return {r[0] * d[0] + r[1] * d[1] + r[2] * d[2], r[3] * d[0] + r[4] * d[1] + r[5] * d[2],
            r[6] * d[0] + r[7] * d[1] + r[8] * d[2]};
}

JointFrame FrameOfJoint(const Triple& origin, const Triple& axis) {
    const Triple x{1, 0, 0};
    const Triple y{0, 1, 0};
    const Triple z{0, 0, 1};
    if (IsSame(axis, x) || IsSame(axis, y) || IsSame(axis, z)) {
        const JointType type = IsSame(axis, x) ? JointX : IsSame(axis, y) ? JointY : JointZ;
        return {Frame(origin, x, y, z), type};
    }
    // Y as the reference keeps oblique wrists, which lie in the XZ plane, free of a sideways turn.
    const bool alongY = std::abs(axis[1]) > std::abs(axis[0]) + std::abs(axis[2]);
    const Triple newX = Unit(axis);
    const Triple newZ = Unit(Cross(newX, alongY ? z : y));
    return {Frame(origin, newX, Cross(newZ, newX), newZ), JointX};
}

Rigid FrameOfFlange(const Triple& origin, const Triple& x, const Triple& z) {
    const Triple newZ = Unit(z);
    const Triple newY = Unit(Cross(newZ, x));
    return Frame(origin, Cross(newY, newZ), newY, newZ);
}

} // namespace cell
