#include "ArmModel.h"

#include "Fit.h"

#include <algorithm>
#include <host/tools/ArmFacts.h>
#include <host/tools/TextHandle.h>
#include <stdexcept>

namespace planning {

namespace {

using Axes = std::array<Axis, MaxJoints>;

/// Offsets (mm) below this do not tell to which side an arm leans.
constexpr double SideOffset = 1e-3;

[[noreturn]] void Refuse(const std::string& what) {
    throw std::invalid_argument("inverse kinematics: " + what);
}

void RequireNumbers(const ArmTable& table) {
    const std::size_t expected = table.coupled ? MaxJoints : MaxJoints - 1;
    if (table.rows.size() != expected || table.limits.size() != expected) {
        Refuse(std::to_string(table.rows.size()) + " rows and " + std::to_string(table.limits.size()) +
               " limits, expected " + std::to_string(expected) + " of each" +
               (table.coupled ? " for a coupled wrist" : ""));
    }
    for (std::size_t i = 0; i < expected; ++i) {
        const auto& row = table.rows[i];
        if (!std::all_of(row.begin(), row.end(), [](double n) { return std::isfinite(n); })) {
            Refuse("row " + std::to_string(i) + " is not finite");
        }
        const auto& [low, high] = table.limits[i];
        if (!(std::isfinite(low) && std::isfinite(high) && low <= high)) {
            Refuse("limits of joint " + std::to_string(i + 1) + " are " + TextHandle::Shortest(low) + " to " +
                   TextHandle::Shortest(high) + " rad, expected a range");
        }
    }
}

void SetLimits(ArmModel& model, const ArmTable& table) {
    std::copy(table.limits.begin(), table.limits.end(), model.limits.begin());
    if (model.coupled) {
        auto& leader = model.limits[4];
        auto& follower = model.limits[5];
        leader = {std::max(leader.first, -follower.second), std::min(leader.second, -follower.first)};
        follower = {-leader.second, -leader.first};
        if (!(leader.first <= leader.second)) {
            Refuse("limits of joints 5 and 6 leave no value 5 with value 6 = -value 5");
        }
    }
}

void SetChain(ArmModel& model, const ArmTable& table) {
    model.coupled = table.coupled;
    model.chain.count = table.rows.size();
    model.chain.base = Rigid::From(table.base);
    model.chain.flange = Rigid::From(table.flange);
    std::transform(table.rows.begin(), table.rows.end(), model.chain.centers.begin(),
                   [](const auto& row) { return ArmFacts::FrameOfRow(row); });
}

/// Axes at zero, in the canonical frame that they define.
Axes CanonicalAxes(ArmModel& model, Rigid& inFlange) {
    const std::array<double, MaxJoints> zero{};
    JointChain::Frames frames;
    model.chain.Place(zero.data(), frames);
    const Vec z = Column(frames[0], 2);
    const Vec second = Column(frames[1], 2);
    const Vec across = second - Dot(second, z) * z;
    if (!(Length(across) > 0.5)) {
        Refuse("axes 1 and 2 are not square to each other");
    }
    const Vec y = Unit(across);
    const Rigid canonical = FromColumns(Cross(y, z), y, z, Origin(frames[0]));
    model.toCanonical = Inverse(canonical);
    inFlange = Inverse(frames[model.chain.count - 1] * model.chain.flange) * canonical;
    Axes axes;
    for (std::size_t i = 0; i < model.chain.count; ++i) {
        const Rigid frame = model.toCanonical * frames[i];
        axes[i] = {Column(frame, 2), Origin(frame)};
    }
    return axes;
}

double SenseAlongY(const Axis& axis) { return axis.direction.y < 0 ? -1.0 : 1.0; }

void SetLengths(PlaneArm& plane) {
    plane.upperLength = Abs(plane.upper);
    plane.foreLength = Abs(plane.fore);
    if (!(plane.upperLength > SideOffset && plane.foreLength > SideOffset)) {
        Refuse("upper arm or forearm has no length");
    }
    plane.foreFromUpper = (1 / (plane.upperLength * plane.foreLength)) * (Conj(plane.upper) * plane.fore);
    plane.foreAngle = Arg(plane.foreFromUpper);
}

PlaneArm MakePlane(const Axes& axes, const Vec& wrist, Fit& fit) {
    fit.RequireSquare(axes[0], axes[1], "1 and 2");
    fit.RequireParallel(axes[1], axes[2], "2 and 3");
    PlaneArm plane;
    plane.shoulder = InPlane(axes[1].point);
    plane.upper = InPlane(axes[2].point - axes[1].point);
    plane.fore = InPlane(wrist - axes[2].point);
    plane.elbowSense = SenseAlongY(axes[2]);
    SetLengths(plane);
    return plane;
}

/// Unit vector along the part of `a` perpendicular to a unit vector.
Vec SquareTo(const Vec& unit, const Vec& a) { return Unit(a - Dot(a, unit) * unit); }

OrdinaryArm MakeOrdinary(const Axes& axes, Fit& fit, Rigid& wrist) {
    fit.RequireSquare(axes[3], axes[4], "4 and 5");
    fit.RequireSquare(axes[4], axes[5], "5 and 6");
    OrdinaryArm arm;
    const Vec centre = fit.RequireMeeting(axes[3], axes[4], "4 and 5");
    const Vec other = fit.RequireMeeting(axes[4], axes[5], "5 and 6");
    fit.RequireNone(Length(other - centre), "distance between the points where wrist axes meet");
    arm.plane = MakePlane(axes, centre, fit);
    arm.lateral = centre.y;
    arm.fourth = axes[3].direction;
    arm.fifth = SquareTo(arm.fourth, axes[4].direction);
    arm.across = Cross(arm.fifth, arm.fourth);
    const Vec sixth = SquareTo(arm.fifth, axes[5].direction);
    arm.offset = -std::atan2(Dot(sixth, arm.across), Dot(sixth, arm.fourth));
    wrist = FromColumns(Cross(arm.fifth, sixth), arm.fifth, sixth, centre);
    return arm;
}

/// The canonical axes at a point.
Rigid At(const Vec& point) { return FromColumns({1, 0, 0}, {0, 1, 0}, {0, 0, 1}, point); }

ParallelArm MakeParallel(const Axes& axes, Fit& fit, Rigid& wrist) {
    fit.RequireParallel(axes[2], axes[3], "3 and 4");
    fit.RequireSquare(axes[3], axes[4], "4 and 5");
    fit.RequireSquare(axes[4], axes[5], "5 and 6");
    ParallelArm arm;
    const Vec centre = fit.RequireMeeting(axes[4], axes[5], "5 and 6");
    wrist = At(centre);
    arm.plane = MakePlane(axes, axes[3].point, fit);
    arm.hand = InPlane(centre - axes[3].point);
    arm.lateral = centre.y;
    arm.fifth = SquareTo({0, 1, 0}, axes[4].direction);
    arm.sixth = SquareTo(arm.fifth, axes[5].direction);
    arm.fourthSense = SenseAlongY(axes[3]);
    arm.offset = std::atan2(Cross(arm.fifth, arm.sixth).y, arm.sixth.y);
    return arm;
}

/// The coefficients of 1, cos and sin of the angle in a vector that turns about an axis.
std::array<Vec, 3> TurnTerms(const Vec& axis, const Vec& a) {
    const Vec along = Dot(axis, a) * axis;
    return {along, a - along, Cross(axis, a)};
}

/// `fixed` plus `turning`, rotated backwards about axis 6, and the sum rotated forwards about axis 5.
std::array<Vec, 5> WristTerms(const Axes& axes, const Vec& fixed, const Vec& turning) {
    const Vec& fifth = axes[4].direction;
    const auto back = TurnTerms(axes[5].direction, turning);
    const auto one = TurnTerms(fifth, fixed + back[0]);
    const auto cosine = TurnTerms(fifth, back[1]);
    const auto sine = TurnTerms(fifth, -back[2]);
    std::array<Vec, 5> terms = {one[0] + sine[2], one[1] + cosine[0], one[2] + sine[0], cosine[1] - sine[2],
                                cosine[2] + sine[1]};
    const Vec& fourth = axes[3].direction;
    const Vec third = Cross(fourth, {0, 1, 0});
    for (Vec& term : terms) {
        term = {Dot(term, fourth), term.y, Dot(term, third)};
    }
    return terms;
}

CoupledArm MakeCoupled(const Axes& axes, Fit& fit, Rigid& wrist) {
    CoupledArm arm;
    const Vec root = fit.RequireMeeting(axes[3], axes[4], "4 and 5");
    const Vec tip = fit.RequireMeeting(axes[5], axes[6], "6 and 7");
    wrist = At(tip);
    arm.plane = MakePlane(axes, root, fit);
    fit.RequireSquare(axes[2], axes[3], "3 and 4");
    fit.RequireNone(root.y, "lateral offset of a coupled wrist from axis 1");
    arm.last = axes[6].direction;
    arm.fourth = axes[3].direction;
    arm.fifth = axes[4].direction;
    arm.sixth = axes[5].direction;
    arm.normal = SquareTo(arm.last, std::abs(arm.last.y) < 0.7 ? Vec{0, 1, 0} : Vec{1, 0, 0});
    arm.forward = InPlane(axes[3].direction);
    arm.foreAlong = arm.plane.fore * Conj(arm.forward);
    arm.inverseUpper = 1 / arm.plane.upperLength;
    const Vec sixth = axes[5].point;
    arm.offset = WristTerms(axes, sixth - root, tip - sixth);
    arm.direction = WristTerms(axes, {}, arm.last);
    for (std::size_t i = 0; i < CoupledNodes; ++i) {
        const double q = CoupledArm::NodeOf(i);
        arm.turns[i] = {std::cos(q), std::sin(q)};
        arm.nodes[i] = arm.At(q);
    }
    arm.straight = arm.plane;
    arm.straight.fore = arm.plane.fore + arm.At(0).offset.x * arm.forward;
    SetLengths(arm.straight);
    return arm;
}

void SetWords(ArmModel& model, const PlaneArm& plane, const Vec& wrist, const Vec& fifth) {
    const double side = std::abs(plane.shoulder.im) > SideOffset ? plane.shoulder.im : wrist.x;
    model.front = side < -SideOffset ? -1 : 1;
    model.bend = fifth.y * model.front < -0.5 ? -1 : 1;
    model.reach = plane.Reach();
}

} // namespace

ArmModel MakeModel(const ArmTable& table) {
    RequireNumbers(table);
    ArmModel model;
    SetChain(model, table);
    SetLimits(model, table);
    Rigid zeroInFlange;
    const Axes axes = CanonicalAxes(model, zeroInFlange);
    Fit fit;
    Rigid wrist;
    const auto take = [&](const auto& arm) {
        SetWords(model, arm.plane, Origin(wrist), axes[4].direction);
        model.kind = arm;
    };
    if (model.coupled) {
        take(MakeCoupled(axes, fit, wrist));
    } else if (std::abs(Dot(axes[2].direction, axes[3].direction)) > 0.5) {
        take(MakeParallel(axes, fit, wrist));
    } else {
        take(MakeOrdinary(axes, fit, wrist));
    }
    model.wristInFlange = zeroInFlange * wrist;
    model.exact = fit.Exact();
    return model;
}

} // namespace planning
