#pragma once

#include <cmath>
#include <host/tools/Rigid.h>

// Small vectors and complex numbers on plain doubles. std::complex checks every product for infinities.

namespace planning {

struct Vec {
    double x = 0, y = 0, z = 0;
};

inline Vec operator+(const Vec& a, const Vec& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec operator-(const Vec& a, const Vec& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec operator-(const Vec& a) { return {-a.x, -a.y, -a.z}; }
inline Vec operator*(double k, const Vec& a) { return {k * a.x, k * a.y, k * a.z}; }
inline double Dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec Cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double Length(const Vec& a) { return std::sqrt(Dot(a, a)); }
inline Vec Unit(const Vec& a) { return (1 / Length(a)) * a; }
/// `a` rotated about a unit axis by the angle with this cosine and sine.
inline Vec Turned(const Vec& axis, double c, double s, const Vec& a) {
    return c * a + s * Cross(axis, a) + ((1 - c) * Dot(axis, a)) * axis;
}

inline Vec Column(const Rigid& t, int i) { return {t.r[i], t.r[3 + i], t.r[6 + i]}; }
inline Vec Origin(const Rigid& t) { return {t.p[0], t.p[1], t.p[2]}; }
inline Vec Rotate(const Rigid& t, const Vec& a) {
    return {t.r[0] * a.x + t.r[1] * a.y + t.r[2] * a.z, t.r[3] * a.x + t.r[4] * a.y + t.r[5] * a.z,
            t.r[6] * a.x + t.r[7] * a.y + t.r[8] * a.z};
}
inline Vec Apply(const Rigid& t, const Vec& a) { return Rotate(t, a) + Origin(t); }
inline Rigid FromColumns(const Vec& x, const Vec& y, const Vec& z, const Vec& origin) {
    return {{x.x, y.x, z.x, x.y, y.y, z.y, x.z, y.z, z.z}, {origin.x, origin.y, origin.z}};
}
inline Rigid Inverse(const Rigid& t) {
    Rigid out{{t.r[0], t.r[3], t.r[6], t.r[1], t.r[4], t.r[7], t.r[2], t.r[5], t.r[8]}, {0, 0, 0}};
    const Vec p = -Rotate(out, Origin(t));
    out.p[0] = p.x;
    out.p[1] = p.y;
    out.p[2] = p.z;
    return out;
}

/// A point of the arm's plane as z + i x: a positive rotation about y multiplies by e^(i angle).
struct Planar {
    double re, im;
};

inline Planar operator+(const Planar& a, const Planar& b) { return {a.re + b.re, a.im + b.im}; }
inline Planar operator-(const Planar& a, const Planar& b) { return {a.re - b.re, a.im - b.im}; }
inline Planar operator*(const Planar& a, const Planar& b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
inline Planar operator*(double k, const Planar& a) { return {k * a.re, k * a.im}; }
inline Planar Conj(const Planar& a) { return {a.re, -a.im}; }
inline double Norm(const Planar& a) { return a.re * a.re + a.im * a.im; }
inline double Abs(const Planar& a) { return std::sqrt(Norm(a)); }
inline double Arg(const Planar& a) { return std::atan2(a.im, a.re); }
inline Planar InPlane(const Vec& a) { return {a.z, a.x}; }

} // namespace planning
