#pragma once

#include "Arm.h"
#include "Raster.h"

#include <algorithm>
#include <cmath>
#include <complex>

namespace WorkSpace {

/// Samples of the wrist: tool centres in the frame of the third row, one for every combination of sampled
/// values of its joints.
struct WristNet {
    /// @param tolerance largest deviation (mm) of the wrist from the lines between neighbouring samples.
    WristNet(const Arm& arm, double tolerance);

    /// A subset of the samples, spread over all of them.
    std::vector<Vec> Some(std::size_t most) const;
    /// Calls visit with every sample, and with the interpolated ones in the plane through joint 1's axis.
    template <class Visit>
    void ForEach(const Visit& visit) const {
        std::for_each(places.begin(), places.end(), visit);
        ForNeighbours([&](std::size_t i, std::size_t j) {
            const Vec& a = places[i];
            const Vec& b = places[j];
            if ((a.z < axisPlane) != (b.z < axisPlane)) {
                const double t = (axisPlane - a.z) / (b.z - a.z);
                visit(Vec{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), axisPlane});
            }
        });
    }
    /// Calls visit(i, j) with the indices of any two samples that are neighbours along a joint.
    template <class Visit>
    void ForNeighbours(const Visit& visit) const {
        const std::array<std::size_t, 3> strides = {counts[1] * counts[2], counts[2], 1};
        for (std::size_t i = 0; i < places.size(); ++i) {
            for (std::size_t joint = 0; joint < strides.size(); ++joint) {
                if (i / strides[joint] % counts[joint] + 1 < counts[joint]) {
                    visit(i, i + strides[joint]);
                }
            }
        }
    }

    std::array<std::size_t, 3> counts{};
    std::vector<Vec> places; ///< the last joint runs fastest
    double axisPlane;        ///< z of the plane through joint 1's axis
};

// Written out: the standard library's product of complex numbers checks for infinities.
inline std::complex<double> Times(const std::complex<double>& a, const std::complex<double>& b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

/// The region that upper arm and forearm reach with the wrist fixed, for one wrist sample after the other.
///
/// Joints 2 and 3 move the tool centre in a plane beside joint 1's axis; a point of it is written x + iz.
/// There
///
///     p(u, f) = s + t^u (l + t^f w),   t^angle = exp(-i * sense * angle)
///
/// with shoulder s, upper arm l and wrist w; its radius in the section is r = sqrt(x^2 + lateral^2). The
/// region is bounded by the arcs along which u or f is at a limit, those along which the elbow is stretched
/// or folded (w in line with l), and the part of the line x = 0 that the arm reaches across, where the
/// section is mirrored.
class ArmSweep {
public:
    /// @param longestPiece length (mm) of the straight pieces by which lines are marked.
    ArmSweep(const Arm& arm, double longestPiece);

    /// Marks all lines that can bound the region. @param tool tool centre in the frame of the third row.
    /// Pieces that lie inside `known` are left out.
    void MarkOutline(const Vec& tool, const Raster* known, Raster& raster);
    /// Marks the lines that the corners of the region draw while the wrist moves.
    void MarkWristLines(const WristNet& net, const Raster* known, Raster& raster);
    /// Marks the region itself.
    void MarkRegion(const Vec& tool, Raster& raster);

private:
    using Place = std::complex<double>;

    /// One of the two joints; turns are unit complex numbers, so that no angles need to be computed.
    struct Joint {
        Range range;
        Place low, middle, high; ///< the turns to there in the range
        double halfCosine;

        /// Whether some value of the joint turns one place into the other, given that both have the same
        /// radius.
        bool Leads(const Place& from, const Place& to) const;
    };
    /// The path of the tool centre while one joint turns and the other is fixed.
    struct Arc {
        Place centre;
        Place arm; ///< from the centre, while the joint is at zero
        const Joint* joint;
        bool exists;
    };
    /// A point in space, its point in the section, and how deep it lies inside the marked area.
    struct Spot {
        double x, lateral;
        SectionPoint section;
        double depth;
    };
    using Arcs = std::array<Arc, 6>;
    /// The corners of one arc: its ends, and its intersections with the line of the plane nearest to the
    /// axis.
    using Corners = std::array<Spot, 4>;

    void TakeWrist(const Vec& tool);
    Place Turned(double angle) const { return std::polar(1.0, -sense * angle); }
    Joint JointOf(const Range& range) const;
    Arcs ArcsOfWrist() const;
    double DepthOf(const SectionPoint& point) const { return inside != nullptr ? inside->Depth(point) : 0; }
    SectionPoint Section(const Place& p) const {
        return {std::sqrt(p.real() * p.real() + lateral * lateral), p.imag()};
    }
    Spot SpotAt(const Place& p) const;
    void MarkFolded(const Place& a, const Place& b, const Place& c, Raster& raster) const;
    void MarkArc(const Arc& arc, Raster& raster) const;
    void MarkAxisCrossing(const Arcs& arcs, Raster& raster) const;
    static bool MeetsAxis(const Arc& arc, bool above, double& height);
    bool Reaches(const Place& p) const;
    Corners CornersOf(const Arc& arc) const;
    void MarkPiece(const Spot& a, const Spot& b, Raster& raster) const;

    double step;
    double sense;
    double axisPlane;
    Joint upper, fore;
    Place shoulder, upperArm, foreFrame;
    // Of the current wrist sample.
    Place wrist;
    double lateral = 0; ///< how far (mm) beside joint 1's axis it moves, to either side
    const Raster* inside = nullptr;
};

} // namespace WorkSpace
