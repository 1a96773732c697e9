#include "Outline.h"

#include <cmath>

namespace WorkSpace {

// Where the circle that joint 2 draws meets the axis, above or below the shoulder; false past its range.
bool ArmSweep::CrossesAxis(const Place& turnedWrist, bool above, double& height) const {
    const Place arm = upperArm + turnedWrist;
    const double across = -shoulder.real();
    const double rise = std::norm(arm) - across * across;
    if (rise < 0) {
        return false;
    }
    const double up = std::sqrt(rise) * (above ? 1 : -1);
    height = shoulder.imag() + up;
    // Within half the range of its middle, told by the cosine.
    const Place fromMiddle = Times(Place(across, up), std::conj(Times(arm, upperMiddle)));
    return fromMiddle.real() >= upperHalfCosine * std::norm(arm);
}

void ArmSweep::MarkAxisCrossing(Raster& raster) const {
    constexpr int Halvings = 8;
    const int pieces = static_cast<int>(std::abs(wrist) * foreRange.Width() / step) + 1;
    const Place turn = Turned(foreRange.Width() / pieces);
    for (const bool above : {false, true}) {
        Place at = Times(wrist, Turned(foreRange.low));
        double height = 0;
        bool crossed = CrossesAxis(at, above, height);
        double lastHeight = height;
        for (int i = 0; i < pieces; ++i) {
            at = Times(at, turn);
            const bool crosses = CrossesAxis(at, above, height);
            double end = crosses ? height : lastHeight;
            if (crosses != crossed) {
                const double before = foreRange.low + foreRange.Width() * i / pieces;
                const double after = foreRange.low + foreRange.Width() * (i + 1) / pieces;
                double in = crosses ? after : before;
                double out = crosses ? before : after;
                for (int halving = 0; halving < Halvings; ++halving) {
                    const double middle = (in + out) / 2;
                    double found = 0;
                    const bool within = CrossesAxis(Times(wrist, Turned(middle)), above, found);
                    (within ? in : out) = middle;
                    end = within ? found : end;
                }
            }
            if (crosses || crossed) {
                MarkPiece({lateral, crossed ? lastHeight : end}, {lateral, crosses ? height : end}, raster);
            }
            lastHeight = height;
            crossed = crosses;
        }
    }
}

} // namespace WorkSpace
