#pragma once

#include "Arm.h"
#include "Raster.h"

#include <complex>

namespace WorkSpace {

/// Tool centres in the frame of the third row that stand for all positions of the wrist: one for every
/// combination of some values of its joints.
struct WristNet {
    /// @param tolerance how far (mm) the wrist may bulge beyond the lines between neighbours.
    WristNet(const Arm& arm, double tolerance);

    /// Some of the places, from all over.
    std::vector<Point3> Some(std::size_t most) const;
    /// Places that leave none of the net farther away than `apart` (mm); what the wrist's limits bound is
    /// thinned by itself, since the region ends there.
    std::vector<Point3> Thinned(double apart) const;

    std::array<std::size_t, 3> counts{};
    std::array<bool, 3> bounded{}; ///< joints that cannot turn all the way round
    std::vector<Point3> places;    ///< the last joint runs fastest
};

// Spelt out: the library's product of complex numbers looks for infinities.
inline std::complex<double> Times(const std::complex<double>& a, const std::complex<double>& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// What the upper arm and the forearm reach while the wrist stands still, for one wrist after the other.
///
/// Joints 2 and 3 move the tool centre in a plane beside joint 1's axis; a place in it is x + iz. There
///
///     p(u, f) = s + t^u (l + t^f w),   t^angle = exp(-i * sense * angle)
///
/// with shoulder s, upper arm l and wrist w. The region is bounded by the arcs along which u or f is at a
/// limit, those along which the elbow is stretched or folded (w in line with l), and, folded over to r =
/// |p|'s distance from the axis, the part of the axis that the arm reaches across.
class ArmSweep {
public:
    /// @param longestPiece what lines are marked in, mm.
    ArmSweep(const Arm& arm, double longestPiece);

    /// Marks all lines that can bound the region. @param tool tool centre in the frame of the third row.
    /// Pieces that lie inside `known` are left out.
    void MarkOutline(const Point3& tool, const Raster* known, Raster& raster);
    /// Marks the lines that the wrist draws while joints 2 and 3 both stand at a limit.
    void MarkWristLines(const WristNet& net, const Raster* known, Raster& raster);
    /// Marks the region itself.
    void MarkRegion(const Point3& tool, Raster& raster);

private:
    using Place = std::complex<double>;

    void TakeWrist(const Point3& tool);
    Place Turned(double angle) const { return std::polar(1.0, -sense * angle); }
    Place Forearm(double fore) const { return upperArm + Turned(fore) * wrist; }
    double DepthOf(const SectionPoint& point) const { return inside != nullptr ? inside->Depth(point) : 0; }
    SectionPoint Section(const Place& p) const;
    std::vector<double> ElbowFolds() const;
    void MarkFolded(const Place& a, const Place& b, const Place& c, Raster& raster) const;
    void MarkArc(const Place& centre, const Place& arm, const Range& range, Raster& raster) const;
    void MarkAxisCrossing(Raster& raster) const;
    bool CrossesAxis(const Place& turnedWrist, bool above, double& height) const;
    void MarkPiece(const SectionPoint& a, const SectionPoint& b, Raster& raster) const;

    Range upperRange, foreRange;
    double step;
    double sense;
    double lateralOrigin;
    Place shoulder, upperArm, foreFrame;
    Place upperMiddle; ///< the turn to the middle of joint 2's range
    double upperHalfCosine;
    // Of the wrist at hand.
    Place wrist;
    double lateral = 0;
    const Raster* inside = nullptr;
};

} // namespace WorkSpace
