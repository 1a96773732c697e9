#pragma once

#include <cmath>
#include <cstddef>
#include <host/tools/Rigid.h>

/// Vectors and their products with Rigid, on plain doubles and inline: for loops over millions of them.
namespace spatial {

/// A point (mm) or a direction.
struct Vec {
    double x = 0; ///< first coordinate
    double y = 0; ///< second coordinate
    double z = 0; ///< third coordinate

    /// Coordinate by its number. @param i 0 for x, 1 for y, else z.
    double operator[](std::size_t i) const { return i == 0 ? x : i == 1 ? y : z; }
    /// The same, to be changed.
    double& operator[](std::size_t i) { return i == 0 ? x : i == 1 ? y : z; }
    /// Whether all coordinates are equal.
    bool operator==(const Vec&) const = default;
};

/// Sum of two vectors.
inline Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
/// Difference of two vectors.
inline Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
/// The opposite vector.
inline Vec operator-(const Vec& a) { return {-a.x, -a.y, -a.z}; }
/// Multiple of a vector.
inline Vec operator*(double k, const Vec& a) { return {k * a.x, k * a.y, k * a.z}; }
/// Scalar product.
inline double Dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
/// Vector product.
inline Vec Cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
/// Length of the vector.
inline double Length(const Vec& a) { return std::hypot(a.x, a.y, a.z); }
/// The vector at length 1; it must not be zero.
inline Vec Unit(const Vec& a) {
    const double length = Length(a);
    return {a.x / length, a.y / length, a.z / length};
}
/// `a` turned about a unit axis by the angle with this cosine and sine.
inline Vec Turned(const Vec& axis, double c, double s, const Vec& a) {
    return c * a + s * Cross(axis, a) + ((1 - c) * Dot(axis, a)) * axis;
}

/// Axis `i` (0 to 2) of a frame.
inline Vec Column(const Rigid& t, int i) { return {t.r[i], t.r[3 + i], t.r[6 + i]}; }
/// Origin of a frame.
inline Vec Origin(const Rigid& t) { return {t.p[0], t.p[1], t.p[2]}; }
/// A direction, taken from the frame into its reference.
inline Vec Rotate(const Rigid& t, const Vec& a) {
    return {t.r[0] * a.x + t.r[1] * a.y + t.r[2] * a.z, t.r[3] * a.x + t.r[4] * a.y + t.r[5] * a.z,
            t.r[6] * a.x + t.r[7] * a.y + t.r[8] * a.z};
}
/// A point, taken from the frame into its reference.
inline Vec Apply(const Rigid& t, const Vec& a) { return Rotate(t, a) + Origin(t); }
/// The frame with these axes, which are taken as orthonormal, and this origin.
inline Rigid FromColumns(const Vec& x, const Vec& y, const Vec& z, const Vec& origin) {
    return {{x.x, y.x, z.x, x.y, y.y, z.y, x.z, y.z, z.z}, {origin.x, origin.y, origin.z}};
}
/// The transform back.
inline Rigid Inverse(const Rigid& t) {
    Rigid out{{t.r[0], t.r[3], t.r[6], t.r[1], t.r[4], t.r[7], t.r[2], t.r[5], t.r[8]}, {0, 0, 0}};
    const Vec p = -Rotate(out, Origin(t));
    out.p[0] = p.x;
    out.p[1] = p.y;
    out.p[2] = p.z;
    return out;
}

} // namespace spatial
