#include "Outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace WorkSpace {

ArmSweep::ArmSweep(const Arm& arm, double longestPiece) : step(longestPiece), axisPlane(arm.AxisPlane()) {
    const Rigid elbow = arm.Elbow(0, 0);
    const Vec origin = arm.Shoulder();
    sense = elbow.r[5] < 0 ? -1 : 1;
    upper = JointOf(arm.upperArm);
    fore = JointOf(arm.forearm);
    shoulder = {origin.x, origin.z};
    upperArm = Place(elbow.p[0], elbow.p[2]) - shoulder;
    foreFrame = {elbow.r[0], elbow.r[6]};
}

ArmSweep::Joint ArmSweep::JointOf(const Range& range) const {
    return {range, Turned(range.low), Turned((range.low + range.high) / 2), Turned(range.high),
            std::cos(range.Width() / 2)};
}

bool ArmSweep::Joint::Leads(const Place& from, const Place& to) const {
    constexpr double Rounding = 1e-9;
    return Times(to, std::conj(Times(from, middle))).real() >= (halfCosine - Rounding) * std::norm(from);
}

void ArmSweep::TakeWrist(const Vec& tool) {
    wrist = foreFrame * Place(tool.x, -sense * tool.y);
    lateral = tool.z - axisPlane;
}

ArmSweep::Spot ArmSweep::SpotAt(const Place& p) const {
    const SectionPoint section = Section(p);
    return {p.real(), lateral, section, DepthOf(section)};
}

// A piece that passes the axis comes near to it and leaves it again: it is marked as two lines.
void ArmSweep::MarkPiece(const Spot& a, const Spot& b, Raster& raster) const {
    const double dx = b.x - a.x;
    const double dy = b.lateral - a.lateral;
    const double dz = b.section.z - a.section.z;
    // The piece lies inside where the depths at both ends add up to more than its length, which the sum of
    // the three components bounds from above.
    if (a.depth + b.depth > std::abs(dx) + std::abs(dy) + std::abs(dz)) {
        return;
    }
    const double t = -(a.x * dx + a.lateral * dy) / (dx * dx + dy * dy);
    if (t > 0 && t < 1) {
        const double x = a.x + t * dx;
        const double y = a.lateral + t * dy;
        const SectionPoint nearest = {std::sqrt(x * x + y * y), a.section.z + t * dz};
        raster.MarkLine(a.section, nearest);
        raster.MarkLine(nearest, b.section);
    } else {
        raster.MarkLine(a.section, b.section);
    }
}

// Inside the marked area an arc is followed in steps as long as its depth there; mirroring at the axis never
// increases distances, so no part outside is skipped.
void ArmSweep::MarkArc(const Arc& arc, Raster& raster) const {
    constexpr std::size_t Doublings = 5;
    const Range& range = arc.joint->range;
    int left = static_cast<int>(std::abs(arc.arm) * range.Width() / step) + 1;
    std::array<Place, Doublings> turns = {Turned(range.Width() / left)};
    for (std::size_t i = 1; i < Doublings; ++i) {
        turns[i] = Times(turns[i - 1], turns[i - 1]);
    }
    Place at = Times(arc.arm, arc.joint->low);
    Spot before = SpotAt(arc.centre + at);
    while (left > 0) {
        std::size_t doubled = 0;
        while (doubled + 1 < Doublings && (2 << doubled) <= left && step * (2 << doubled) <= before.depth) {
            ++doubled;
        }
        left -= 1 << doubled;
        at = Times(at, turns[doubled]);
        const Spot next = SpotAt(arc.centre + at);
        MarkPiece(before, next, raster);
        before = next;
    }
}

// Four arcs of the shoulder, with the elbow at a limit, stretched or folded; two of the elbow, with the
// shoulder at a limit.
ArmSweep::Arcs ArmSweep::ArcsOfWrist() const {
    const Place inLine = upperArm * (std::abs(wrist) / std::abs(upperArm));
    const auto aboutElbow = [&](const Place& turn) -> Arc {
        return {shoulder + Times(turn, upperArm), Times(turn, wrist), &fore, true};
    };
    return {{{shoulder, upperArm + Times(fore.low, wrist), &upper, true},
             {shoulder, upperArm + Times(fore.high, wrist), &upper, true},
             {shoulder, upperArm + inLine, &upper, fore.Leads(wrist, inLine)},
             {shoulder, upperArm - inLine, &upper, fore.Leads(wrist, -inLine)},
             aboutElbow(upper.low),
             aboutElbow(upper.high)}};
}

void ArmSweep::MarkOutline(const Vec& tool, const Raster* known, Raster& raster) {
    inside = known;
    TakeWrist(tool);
    const Arcs arcs = ArcsOfWrist();
    for (const Arc& arc : arcs) {
        if (arc.exists) {
            MarkArc(arc, raster);
        }
    }
    if (std::abs(lateral) >= raster.CellWidth()) {
        MarkAxisCrossing(arcs, raster);
    }
}

void ArmSweep::MarkRegion(const Vec& tool, Raster& raster) {
    TakeWrist(tool);
    const auto count = [&](const Range& range, double lever) {
        return static_cast<int>(range.Width() * lever / step) + 2;
    };
    const auto uppers = upper.range.Spread(count(upper.range, std::abs(upperArm) + std::abs(wrist)));
    const auto fores = fore.range.Spread(count(fore.range, std::abs(wrist)));
    const auto row = [&](double upperAngle) {
        std::vector<Place> points;
        points.reserve(fores.size());
        for (const double foreAngle : fores) {
            points.push_back(shoulder +
                             Times(Turned(upperAngle), upperArm + Times(Turned(foreAngle), wrist)));
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

// A triangle that crosses the axis is split there: the part beyond it is mirrored.
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
