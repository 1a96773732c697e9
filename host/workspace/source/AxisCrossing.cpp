#include "Outline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace WorkSpace {

// In a plane beside joint 1's axis, the line nearest to the axis is x = 0. The region is mirrored there.

bool ArmSweep::MeetsAxis(const Arc& arc, bool above, double& height) {
    const double across = -arc.centre.real();
    const double rise = std::norm(arc.arm) - across * across;
    if (!arc.exists || rise < 0) {
        return false;
    }
    const double up = std::sqrt(rise) * (above ? 1 : -1);
    height = arc.centre.imag() + up;
    return arc.joint->Leads(arc.arm, {across, up});
}

// Whether the arm reaches the place with the elbow on either side.
bool ArmSweep::Reaches(const Place& p) const {
    const Place out = p - shoulder;
    const double product = std::abs(upperArm) * std::abs(wrist);
    const double cosine = (std::norm(out) - std::norm(upperArm) - std::norm(wrist)) / (2 * product);
    if (!(std::abs(cosine) <= 1)) {
        return false;
    }
    const Place inLine = upperArm * (std::abs(wrist) / std::abs(upperArm));
    const double sine = std::sqrt(1 - cosine * cosine);
    const Place bent[] = {Times(inLine, {cosine, sine}), Times(inLine, {cosine, -sine})};
    return std::any_of(std::begin(bent), std::end(bent), [&](const Place& forearm) {
        return fore.Leads(wrist, forearm) && upper.Leads(upperArm + forearm, out);
    });
}

// The reached part of that line ends at its intersections with arcs.
void ArmSweep::MarkAxisCrossing(const Arcs& arcs, Raster& raster) const {
    std::array<double, 2 * std::tuple_size_v<Arcs>> heights;
    std::size_t count = 0;
    for (const Arc& arc : arcs) {
        for (const bool above : {false, true}) {
            count += MeetsAxis(arc, above, heights[count]) ? 1U : 0U;
        }
    }
    std::sort(heights.begin(), heights.begin() + static_cast<std::ptrdiff_t>(count));
    for (std::size_t i = 1; i < count; ++i) {
        if (Reaches({0, (heights[i - 1] + heights[i]) / 2})) {
            MarkPiece(SpotAt({0, heights[i - 1]}), SpotAt({0, heights[i]}), raster);
        }
    }
}

ArmSweep::Corners ArmSweep::CornersOf(const Arc& arc) const {
    Corners corners;
    for (Spot& corner : corners) {
        corner.depth = std::numeric_limits<double>::infinity(); // no piece of a line begins here
    }
    if (arc.exists) {
        corners[0] = SpotAt(arc.centre + Times(arc.arm, arc.joint->low));
        corners[1] = SpotAt(arc.centre + Times(arc.arm, arc.joint->high));
    }
    for (const bool above : {false, true}) {
        if (double height = 0; MeetsAxis(arc, above, height)) {
            corners[above ? 2 : 3] = SpotAt({0, height});
        }
    }
    return corners;
}

// Each arc bounds the region of one wrist position. A corner that joints 2 and 3 cannot move further is moved
// by the wrist alone; the line that it draws lies between those regions.
void ArmSweep::MarkWristLines(const WristNet& net, const Raster* known, Raster& raster) {
    inside = known;
    std::vector<Corners> corners(net.places.size());
    for (std::size_t arc = 0; arc < std::tuple_size_v<Arcs>; ++arc) {
        for (std::size_t i = 0; i < corners.size(); ++i) {
            TakeWrist(net.places[i]);
            corners[i] = CornersOf(ArcsOfWrist()[arc]);
        }
        net.ForNeighbours([&](std::size_t i, std::size_t j) {
            for (std::size_t corner = 0; corner < corners[i].size(); ++corner) {
                MarkPiece(corners[i][corner], corners[j][corner], raster);
            }
        });
    }
}

} // namespace WorkSpace
