#include "Outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace WorkSpace {

namespace {

constexpr double Turn = 2 * std::numbers::pi;

// Never less than the distance.
double Apart(const SectionPoint& a, const SectionPoint& b) {
    return std::abs(b.r - a.r) + std::abs(b.z - a.z);
}

} // namespace

ArmSweep::ArmSweep(const Arm& arm, double longestPiece)
    : upperRange(arm.upperArm), foreRange(arm.forearm), step(longestPiece) {
    const Pose elbow = arm.Elbow(0, 0);
    const Point3 origin = arm.Shoulder();
    sense = elbow.r[5] < 0 ? -1 : 1;
    lateralOrigin = elbow.p.y;
    shoulder = {origin.x, origin.z};
    upperArm = Place(elbow.p.x, elbow.p.z) - shoulder;
    foreFrame = {elbow.r[0], elbow.r[6]};
    upperMiddle = Turned((upperRange.low + upperRange.high) / 2);
    upperHalfCosine = std::cos(upperRange.Width() / 2);
}

void ArmSweep::TakeWrist(const Point3& tool) {
    wrist = foreFrame * Place(tool.x, -sense * tool.y);
    lateral = std::abs(lateralOrigin + sense * tool.z);
}

SectionPoint ArmSweep::Section(const Place& p) const {
    return {std::sqrt(p.real() * p.real() + lateral * lateral), p.imag()};
}

void ArmSweep::MarkPiece(const SectionPoint& a, const SectionPoint& b, Raster& raster) const {
    // From either end the line stays inside as far as that end lies deep.
    if (DepthOf(a) + DepthOf(b) <= Apart(a, b)) {
        raster.MarkLine(a, b);
    }
}

// The arc that the end of `arm` draws about a centre. Where it runs deep inside, it is followed in strides as
// long as it is deep: folding over shortens distances or keeps them.
void ArmSweep::MarkArc(const Place& centre, const Place& arm, const Range& range, Raster& raster) const {
    constexpr std::size_t Doublings = 5;
    int left = static_cast<int>(std::abs(arm) * range.Width() / step) + 1;
    std::array<Place, Doublings> turns = {Turned(range.Width() / left)};
    for (std::size_t i = 1; i < Doublings; ++i) {
        turns[i] = Times(turns[i - 1], turns[i - 1]);
    }
    Place at = Times(arm, Turned(range.low));
    SectionPoint before = Section(centre + at);
    double depth = DepthOf(before);
    while (left > 0) {
        std::size_t doubled = 0;
        while (doubled + 1 < Doublings && (2 << doubled) <= left && step * (2 << doubled) <= depth) {
            ++doubled;
        }
        left -= 1 << doubled;
        at = Times(at, turns[doubled]);
        const SectionPoint next = Section(centre + at);
        const double nextDepth = DepthOf(next);
        if (depth + nextDepth <= Apart(before, next)) {
            raster.MarkLine(before, next);
        }
        before = next;
        depth = nextDepth;
    }
}

// Values of joint 3, within its range, at which the wrist is in line with the upper arm.
std::vector<double> ArmSweep::ElbowFolds() const {
    std::vector<double> folds;
    const double inLine = sense * (std::arg(wrist) - std::arg(upperArm));
    for (const double candidate : {inLine, inLine + Turn / 2}) {
        const double fold = candidate + Turn * std::ceil((foreRange.low - candidate) / Turn);
        if (fold <= foreRange.high) {
            folds.push_back(fold);
        }
    }
    return folds;
}

void ArmSweep::MarkOutline(const Point3& tool, const Raster* known, Raster& raster) {
    inside = known;
    TakeWrist(tool);
    std::vector<double> fores = ElbowFolds();
    fores.insert(fores.end(), {foreRange.low, foreRange.high});
    for (const double fore : fores) {
        MarkArc(shoulder, Forearm(fore), upperRange, raster);
    }
    for (const double upper : {upperRange.low, upperRange.high}) {
        MarkArc(shoulder + Turned(upper) * upperArm, Turned(upper) * wrist, foreRange, raster);
    }
    if (lateral >= raster.CellWidth()) {
        MarkAxisCrossing(raster);
    }
}

void ArmSweep::MarkRegion(const Point3& tool, Raster& raster) {
    TakeWrist(tool);
    const auto count = [&](const Range& range, double lever) {
        return static_cast<int>(range.Width() * lever / step) + 2;
    };
    const auto uppers = upperRange.Spread(count(upperRange, std::abs(upperArm) + std::abs(wrist)));
    const auto fores = foreRange.Spread(count(foreRange, std::abs(wrist)));
    const auto row = [&](double upper) {
        std::vector<Place> points;
        points.reserve(fores.size());
        for (const double fore : fores) {
            points.push_back(shoulder + Turned(upper) * Forearm(fore));
        }
        return points;
    };
    std::vector<Place> before = row(uppers.front());
    for (std::size_t i = 1; i < uppers.size(); ++i) {
        const std::vector<Place> next = row(uppers[i]);
        for (std::size_t j = 0; j + 1 < fores.size(); ++j) {
            MarkFolded(before[j], next[j], next[j + 1], raster);
            MarkFolded(before[j], next[j + 1], before[j + 1], raster);
        }
        before = next;
    }
}

// A triangle that reaches across the axis comes back on the near side: it is parted there.
void ArmSweep::MarkFolded(const Place& a, const Place& b, const Place& c, Raster& raster) const {
    const auto beyond = [](const Place& p) { return p.real() < 0; };
    if (beyond(a) == beyond(b) && beyond(b) == beyond(c)) {
        raster.MarkTriangle(Section(a), Section(b), Section(c));
        return;
    }
    if (beyond(a) == beyond(b)) {
        return MarkFolded(c, a, b, raster);
    }
    if (beyond(a) == beyond(c)) {
        return MarkFolded(b, c, a, raster);
    }
    const auto crossing = [&](const Place& other) {
        return Section(a + (other - a) * (a.real() / (a.real() - other.real())));
    };
    const SectionPoint toB = crossing(b);
    const SectionPoint toC = crossing(c);
    raster.MarkTriangle(Section(a), toB, toC);
    raster.MarkTriangle(Section(b), Section(c), toB);
    raster.MarkTriangle(Section(c), toC, toB);
}

} // namespace WorkSpace
