#include "JointChain.h"

#include "Vec.h"

namespace planning {

namespace {

// a * b, then a rotation about Z of the product's own frame.
Rigid ProductTurned(const Rigid& a, const Rigid& b, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    Rigid out = a * b;
    for (int row = 0; row < 9; row += 3) {
        const double x = out.r[row];
        const double y = out.r[row + 1];
        out.r[row] = c * x + s * y;
        out.r[row + 1] = c * y - s * x;
    }
    return out;
}

} // namespace

void JointChain::Place(const double* values, Frames& frames) const {
    const Rigid* before = &base;
    for (std::size_t i = 0; i < count; ++i) {
        frames[i] = ProductTurned(*before, centers[i], values[i]);
        before = &frames[i];
    }
}

Rigid JointChain::FlangeAt(const double* values) const {
    Rigid frame = base;
    for (std::size_t i = 0; i < count; ++i) {
        frame = ProductTurned(frame, centers[i], values[i]);
    }
    return frame * flange;
}

void FlangeJacobian(const JointChain& chain, const double* values, Rigid& flange, Jacobian6& columns) {
    JointChain::Frames frames;
    chain.Place(values, frames);
    flange = frames[chain.count - 1] * chain.flange;
    for (std::size_t i = 0; i < chain.count; ++i) {
        const Vec axis = Column(frames[i], 2);
        const Vec linear = Cross(axis, Origin(flange) - Origin(frames[i]));
        columns[i] = {linear.x, linear.y, linear.z, axis.x, axis.y, axis.z};
    }
}

} // namespace planning
