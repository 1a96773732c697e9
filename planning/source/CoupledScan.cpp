#include "CoupledScan.h"

#include <algorithm>
#include <numbers>

namespace planning {

namespace {

Vec Sum(const std::array<Vec, 5>& terms, double c, double s) {
    return terms[0] + c * terms[1] + s * terms[2] + (c * c) * terms[3] + (c * s) * terms[4];
}

double Form(const double* a, const double* b) {
    return a[0] * b[0] + a[1] * b[1] - a[2] * b[2] - a[3] * b[3];
}

} // namespace

CoupledPose::CoupledPose(const Vec& tip_, const Vec& last_, double reach)
    : tip(tip_), last(last_), inverseReach(1 / reach) {
    constexpr double FromOnePlane = 1e-3;
    overJoint4 = inverseReach * std::abs(tip.x * last.y - tip.y * last.x) > FromOnePlane;
}

namespace {

constexpr double Spacing = 2 * std::numbers::pi / CoupledNodes;
/// Offset of the stations from multiples of pi, where the wrist is straight or folded and the equations
/// degenerate.
constexpr double Shift = 0.137;

/// Cosine and sine of an angle below half the spacing of the nodes, to rounding.
Planar SmallTurn(double d) {
    const double k = d * d;
    return {1 - k / 2 * (1 - k / 12 * (1 - k / 30 * (1 - k / 56))),
            d * (1 - k / 6 * (1 - k / 20 * (1 - k / 42)))};
}

} // namespace

double CoupledArm::NodeOf(std::size_t i) {
    return (static_cast<double>(i) + Shift) * Spacing - std::numbers::pi;
}

WristAt CoupledArm::At(double q) const {
    constexpr auto Count = static_cast<int>(CoupledNodes);
    const double place = q * (1 / Spacing) + (CoupledNodes / 2.0 - Shift);
    const int nearest = static_cast<int>(place + (Count + 0.5)) - Count; // rounds: never below -Count
    const double off = place - nearest;
    const int node = nearest < 0 ? nearest + Count : nearest >= Count ? nearest - Count : nearest;
    const Planar turn = turns[static_cast<std::size_t>(node)] * SmallTurn(off * Spacing);
    return {Sum(offset, turn.re, turn.im), Sum(direction, turn.re, turn.im)};
}

namespace {

/// 2 x 2 minors of the coefficients of the two equations.
struct Minors {
    double m01, m02, m03, m12, m13, m23;

    double Square() const { return m01 * m01 + m02 * m02 + m03 * m03 + m12 * m12 + m13 * m13 + m23 * m23; }
};

Minors MinorsOf(const CoupledPose& pose, const WristAt& wrist) {
    const double k = pose.inverseReach;
    const double a[4] = {k * pose.tip.y, -k * pose.tip.x, -k * wrist.offset.y, k * wrist.offset.z};
    const double b[4] = {pose.last.y, -pose.last.x, -wrist.direction.y, wrist.direction.z};
    const auto minor = [&](int i, int j) { return a[i] * b[j] - a[j] * b[i]; };
    return {minor(0, 1), minor(0, 2), minor(0, 3), minor(1, 2), minor(1, 3), minor(2, 3)};
}

/// Joint 1 follows from joint 4 where the tip and the last axis do not lie in one plane with axis 1.
NullSpace SpaceOverJoint4(const Minors& m) {
    const double inverse = 1 / m.m01;
    NullSpace space{
        {m.m12 * inverse, -m.m02 * inverse, 1, 0}, {m.m13 * inverse, -m.m03 * inverse, 0, 1}, 0, 0, 0, 0};
    const double square = m.m01 * m.m01;
    const double q11 = m.m12 * m.m12 + m.m02 * m.m02 - square;
    const double q22 = m.m13 * m.m13 + m.m03 * m.m03 - square;
    space.mean = (q11 + q22) / 2;
    space.e = (q11 - q22) / 2;
    space.g = m.m12 * m.m13 + m.m02 * m.m03;
    return space;
}

NullSpace SpaceOfAnyPose(const Minors& m) {
    // The columns of this skew matrix span the null space, which the matrix rotates by a right angle.
    const double dual[4][4] = {{0, m.m23, -m.m13, m.m12},
                               {-m.m23, 0, m.m03, -m.m02},
                               {m.m13, -m.m03, 0, m.m01},
                               {-m.m12, m.m02, -m.m01, 0}};
    const auto squareOf = [](const double* v) {
        return v[0] * v[0] + v[1] * v[1] + v[2] * v[2] + v[3] * v[3];
    };
    const double* longest =
        *std::max_element(std::begin(dual), std::end(dual),
                          [&](const auto& a, const auto& b) { return squareOf(a) < squareOf(b); });
    NullSpace space{};
    const double scale = std::numbers::sqrt2 / std::sqrt(std::max(squareOf(longest), Tiny));
    const double turned = 1 / std::sqrt(std::max(m.Square(), Tiny));
    for (int i = 0; i < 4; ++i) {
        space.first[i] = scale * longest[i];
    }
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            space.second[i] += turned * space.first[j] * dual[j][i];
        }
    }
    const double q11 = Form(space.first, space.first);
    const double q22 = Form(space.second, space.second);
    space.mean = (q11 + q22) / 2;
    space.e = (q11 - q22) / 2;
    space.g = Form(space.first, space.second);
    return space;
}

} // namespace

NullSpace NullSpaceOf(const CoupledPose& pose, const WristAt& wrist) {
    const Minors minors = MinorsOf(pose, wrist);
    NullSpace space = pose.overJoint4 ? SpaceOverJoint4(minors) : SpaceOfAnyPose(minors);
    const double swing = space.e * space.e + space.g * space.g;
    const double mean = space.mean * space.mean;
    space.discriminant = (swing - mean) / (swing + mean + Tiny);
    return space;
}

} // namespace planning
