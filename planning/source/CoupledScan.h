#pragma once

#include "Collector.h"

#include <algorithm>

namespace planning {

// For a given value 5 the lateral coordinates of the tip and of the last axis give two homogeneous linear
// equations in x = (cos q1, sin q1, cos q4, sin q4), because joints 2 and 3 do not change them. In their null
// space cos^2 + sin^2 of both joints agree for two directions of x (the two labels), each with two senses.
// For each of these four branches one scalar equation remains: the error of the upper arm's length.

/// A pose, in the form that the equations use.
struct CoupledPose {
    Vec tip;  ///< relative to axis 1's point, mm
    Vec last; ///< direction of the last axis
    double inverseReach;
    /// Whether the tip and the last axis are far enough from lying in one plane with axis 1.
    bool overJoint4;

    CoupledPose(const Vec& tip_, const Vec& last_, double reach);
};

/// The null space and its quadratic form: x = first cos(phi) + second sin(phi), with phi such that
/// mean + e cos(2 phi) + g sin(2 phi) = 0.
struct NullSpace {
    double first[4], second[4]; ///< always turned the same way
    double mean, e, g;
    double discriminant; ///< e^2 + g^2 - mean^2 over their sum: branches are real from 0 on
};
NullSpace NullSpaceOf(const CoupledPose& pose, const WristAt& wrist);

/// One branch at one value 5.
struct Branch {
    double x[4];
    Planar turn;    ///< direction of axis 4 in the arm's plane
    Planar elbow;   ///< from joint 2 to joint 3
    double tooLong; ///< mm
};
/// Keeps divisions by quantities that may vanish finite.
inline constexpr double Tiny = 1e-300;

/// x of a label (0, 1).
inline void DirectionOf(const NullSpace& space, int label, double* x) {
    const double swing = space.e * space.e + space.g * space.g;
    const double size = std::max(space.discriminant, 0.0) * (swing + space.mean * space.mean);
    const double root = (label == 0 ? 1 : -1) * std::sqrt(size);
    const double inverse = 1 / std::max(swing, Tiny);
    const double c2 = (-space.mean * space.e - root * space.g) * inverse;
    const double s2 = (-space.mean * space.g + root * space.e) * inverse;
    // The larger of cosine and sine is computed by its square root, the other one from their product.
    const double large = std::sqrt((1 + std::abs(c2)) / 2);
    const double small = s2 / (2 * large);
    const double c = c2 >= 0 ? large : small;
    const double s = c2 >= 0 ? small : large;
    for (int i = 0; i < 4; ++i) {
        x[i] = c * space.first[i] + s * space.second[i];
    }
}

/// The part of a branch that both senses of x share.
struct BothSenses {
    Planar turn;        ///< of axis 4 in the arm's plane; the other sense has its mirror image
    double tip, offset; ///< of the tip from axis 1, and from axis 4, in the arm's plane
};

inline BothSenses SensesOf(const CoupledPose& pose, const WristAt& wrist, const double* x) {
    const auto aside = [&](const Vec& a) { return x[3] * a.y + x[2] * a.z; };
    // The last axis has the same length in link 3 and in the arm's plane.
    const Planar lastNow = {pose.last.z, x[0] * pose.last.x + x[1] * pose.last.y};
    const Planar inLink3 = {wrist.direction.x, aside(wrist.direction)};
    return {(1 / std::max(Norm(inLink3), Tiny)) * (lastNow * inLink3), x[0] * pose.tip.x + x[1] * pose.tip.y,
            aside(wrist.offset)};
}

/// The branch of x in one of its senses (1, -1): what remains for joints 2 and 3.
inline void Close(const CoupledArm& arm, const CoupledPose& pose, const WristAt& wrist,
                  const BothSenses& senses, double sense, Branch& branch) {
    branch.turn = {senses.turn.re, sense * senses.turn.im};
    const Planar forearm = {arm.foreAlong.re + wrist.offset.x, arm.foreAlong.im - sense * senses.offset};
    branch.elbow = Planar{pose.tip.z, sense * senses.tip} - arm.plane.shoulder - branch.turn * forearm;
    branch.tooLong = (Norm(branch.elbow) * arm.inverseUpper - arm.plane.upperLength) / 2;
}

} // namespace planning
