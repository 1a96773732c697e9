#pragma once

#include <cmath>
#include <host/tools/Vec.h>

// Complex numbers on plain doubles: std::complex checks every product for infinities.

namespace planning {

using namespace spatial;

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
