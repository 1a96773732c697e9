#include "SeamLine.h"

#include <algorithm>
#include <host/tools/TextHandle.h>
#include <stdexcept>
#include <string>

namespace planning {

namespace {

constexpr double SamePoint = 1e-6;     // mm
constexpr double UnitTolerance = 1e-6; // of a direction's length
constexpr double AlongTool = 1e-3;     // sine between tool and seam below which no frame is made
constexpr double TurnLength = 20;      // mm a radian

Vec ToVec(const std::array<double, 3>& a) { return {a[0], a[1], a[2]}; }

[[noreturn]] void Refuse(std::size_t pose, const std::string& what, const std::array<double, 3>& a,
                         const char* expected) {
    throw std::invalid_argument("pose " + std::to_string(pose) + " " + what + ": [" +
                                TextHandle::Shortest(a[0]) + ", " + TextHandle::Shortest(a[1]) + ", " +
                                TextHandle::Shortest(a[2]) + "], expected " + expected);
}

void RequireGood(const SeamPose& pose, std::size_t i) {
    const Vec p = ToVec(pose.point);
    if (!std::isfinite(p.x + p.y + p.z)) {
        Refuse(i, "point", pose.point, "three finite numbers");
    }
    if (!(std::abs(Length(ToVec(pose.tool)) - 1) < UnitTolerance)) {
        Refuse(i, "tool", pose.tool, "a direction of length 1");
    }
    const double up = Length(ToVec(pose.up));
    if (!(up == 0 || std::abs(up - 1) < UnitTolerance)) {
        Refuse(i, "up", pose.up, "a direction of length 1, or zeros");
    }
}

/// From a pose to the next one apart from it in the given sense; zero where there is none.
Vec Leg(const std::vector<SeamPose>& poses, std::size_t from, bool forward, bool closed) {
    const std::size_t count = poses.size();
    std::size_t i = from;
    for (std::size_t steps = 1; steps < count; ++steps) {
        const bool end = forward ? i + 1 == count : i == 0;
        if (end && !closed) {
            return {};
        }
        i = end ? (forward ? 0 : count - 1) : (forward ? i + 1 : i - 1);
        const Vec leg = ToVec(poses[i].point) - ToVec(poses[from].point);
        if (Length(leg) > SamePoint) {
            return Unit(forward ? leg : -leg);
        }
    }
    return {};
}

double AngleBetween(const Vec& a, const Vec& b) { return std::atan2(Length(Cross(a, b)), Dot(a, b)); }

} // namespace

SeamLine::SeamLine(const std::vector<SeamPose>& poses) {
    if (poses.size() < 2) {
        throw std::invalid_argument("seam: " + std::to_string(poses.size()) + " poses, expected at least 2");
    }
    for (std::size_t i = 0; i < poses.size(); ++i) {
        RequireGood(poses[i], i);
    }
    const bool closed = Length(ToVec(poses.front().point) - ToVec(poses.back().point)) < SamePoint;
    for (std::size_t i = 0; i < poses.size(); ++i) {
        Place(poses, i, closed);
        Carry(i);
    }
}

void SeamLine::Place(const std::vector<SeamPose>& poses, std::size_t i, bool closed) {
    const Vec before = Leg(poses, i, false, closed);
    const Vec after = Leg(poses, i, true, closed);
    const Vec tool = Unit(ToVec(poses[i].tool));
    Vec travel = before + after;
    travel = travel - Dot(travel, tool) * tool;
    if (Length(travel) < AlongTool) {
        // The seam comes straight back here; what lies ahead counts.
        travel = Length(after) > 0 ? after : before;
        travel = travel - Dot(travel, tool) * tool;
    }
    if (Length(travel) < AlongTool) {
        Refuse(i, "tool", poses[i].tool, "a direction that does not run along the seam");
    }
    const Vec x = Unit(travel);
    frames.push_back(FromColumns(x, Cross(tool, x), tool, ToVec(poses[i].point)));
    const Vec up = ToVec(poses[i].up);
    ups.push_back(Length(up) > 0 ? Unit(up) : -tool);
}

void SeamLine::Carry(std::size_t i) {
    if (i == 0) {
        lengths.push_back(0);
        twists.push_back(0);
        return;
    }
    const Rigid& last = frames[i - 1];
    const Rigid& here = frames[i];
    const Vec from = Column(last, 2);
    const Vec to = Column(here, 2);
    const double angle = AngleBetween(from, to);
    lengths.push_back(lengths.back() + std::hypot(Length(Origin(here) - Origin(last)), TurnLength * angle));
    Vec carried = Column(last, 0);
    const Vec axis = Cross(from, to);
    if (Length(axis) > 0) {
        carried = Turned(Unit(axis), std::cos(angle), std::sin(angle), carried);
    }
    // Turn about the tool by which the pose's own frame has gone away from the one that was carried.
    const double off = std::atan2(Dot(Cross(carried, Column(here, 0)), to), Dot(carried, Column(here, 0)));
    twists.push_back(twists.back() + off);
}

Rigid SeamLine::ToolAt(std::size_t i, const Choice& choice) const {
    const Rigid& frame = frames[i];
    const Vec x = Column(frame, 0);
    const Vec y = Column(frame, 1);
    const Vec z = Column(frame, 2);
    const double cw = std::cos(choice.work), sw = std::sin(choice.work);
    const double cl = std::cos(choice.lead), sl = std::sin(choice.lead);
    const Vec y1 = cw * y + sw * z;
    const Vec z1 = cw * z - sw * y;
    const Vec x2 = cl * x - sl * z1;
    const Vec z2 = cl * z1 + sl * x;
    const double spin = FromTravel(i, choice);
    const double c = std::cos(spin), s = std::sin(spin);
    return FromColumns(c * x2 + s * y1, c * y1 - s * x2, z2, Origin(frame) - choice.stickOut * z2);
}

} // namespace planning
