#include "CoupledSearch.h"

#include <algorithm>

namespace planning {

namespace {

/// Largest error (mm) of the upper arm's length at a root.
constexpr double RootTolerance = 1e-6;
/// Angle (rad) between the last axis and axis 4 below which two roots, on both sides of the straight wrist,
/// may be closer together than the search resolves.
constexpr double NearlyStraight = 0.02;

struct Pose {
    const ArmModel& model;
    const CoupledArm& arm;
    const Rigid& target;
    Collector& out;
};

/// Joints 1 to 3 of a shape.
struct Forearm {
    double c1, s1; ///< of value 1
    Planar both;   ///< turn by values 2 and 3
};

/// A direction in the frame of link 3 at zero.
Vec FromForearm(const Forearm& forearm, const Vec& v) {
    const double x = forearm.c1 * v.x + forearm.s1 * v.y;
    return {forearm.both.re * x - forearm.both.im * v.z, forearm.c1 * v.y - forearm.s1 * v.x,
            forearm.both.im * x + forearm.both.re * v.z};
}

double LastValue(const Pose& pose, const Forearm& forearm, double fourth, double fifth) {
    const CoupledArm& arm = pose.arm;
    const double c5 = std::cos(fifth);
    const double s5 = std::sin(fifth);
    Vec v = FromForearm(forearm, Rotate(pose.target, arm.normal));
    v = Turned(arm.fourth, std::cos(fourth), -std::sin(fourth), v);
    v = Turned(arm.fifth, c5, -s5, v);
    v = Turned(arm.sixth, c5, s5, v);
    return std::atan2(Dot(v, Cross(arm.last, arm.normal)), Dot(v, arm.normal));
}

void AddRoot(void* context, double fifth, const Branch& branch) {
    if (!(std::abs(branch.tooLong) < RootTolerance)) {
        return;
    }
    const Pose& pose = *static_cast<const Pose*>(context);
    const ArmModel& model = pose.model;
    const PlaneArm& plane = pose.arm.plane;
    const Planar both = branch.turn * Conj(pose.arm.forward);
    const Planar upper = branch.elbow * Conj(plane.upper);
    Shape shape;
    shape.values[0] = std::atan2(branch.x[1], branch.x[0]);
    shape.values[1] = Arg(upper);
    shape.values[2] = plane.elbowSense * Arg(both * Conj(upper));
    // Fast path for most roots: an exact table needs no refinement before the limits are checked.
    for (std::size_t i = 0; model.exact && i < 3; ++i) {
        if (!pose.out.HasTurn(i, shape.values[i])) {
            return;
        }
    }
    shape.values[3] = std::atan2(branch.x[3], branch.x[2]);
    shape.values[4] = fifth;
    shape.values[5] = -fifth;
    shape.values[6] = LastValue(pose, {branch.x[0], branch.x[1], both}, shape.values[3], fifth);
    const Planar wrist = branch.elbow + both * plane.fore;
    const double radial = wrist.im + plane.shoulder.im;
    const double bent = (wrist * Conj(branch.elbow)).im;
    shape.configuration = {radial * model.front >= 0 ? Shoulder::Front : Shoulder::Back,
                           (bent >= 0) == (radial >= 0) ? Elbow::Up : Elbow::Down,
                           std::sin(fifth) * model.bend >= 0 ? Wrist::NoFlip : Wrist::Flip};
    pose.out.Add(shape);
}

/// Values 4 and 5 on both sides of the straight wrist, to first order.
void AddNearlyStraight(const Pose& pose, Shape& shape, const Forearm& forearm) {
    const CoupledArm& arm = pose.arm;
    const Vec last = FromForearm(forearm, Rotate(pose.target, arm.last));
    const Planar wanted = {last.y, Dot(last, Cross(arm.fourth, {0, 1, 0}))};
    const Vec straight = arm.At(0).direction;
    const Planar rest = {straight.y, straight.z};
    const Planar slope = {arm.direction[2].y + arm.direction[4].y, arm.direction[2].z + arm.direction[4].z};
    if (!(Dot(last, arm.fourth) * straight.x > 0 && Abs(wanted) < NearlyStraight && Norm(slope) > 0)) {
        return;
    }
    const double middle = -(rest * Conj(slope)).re / Norm(slope);
    const double square = middle * middle + (Norm(wanted) - Norm(rest)) / Norm(slope);
    const double half = std::sqrt(std::max(square, 0.0));
    for (const double fifth : {middle - half, middle + half}) {
        const Planar turn = wanted * Conj(rest + fifth * slope);
        const double fourth = Abs(turn) < FreeSine * FreeSine ? pose.out.Near(3) : Arg(turn);
        shape.values[3] = fourth;
        shape.values[4] = fifth;
        shape.values[5] = -fifth;
        shape.values[6] = LastValue(pose, forearm, fourth, fifth);
        shape.configuration.wrist = fifth * pose.model.bend >= 0 ? Wrist::NoFlip : Wrist::Flip;
        pose.out.AddGuess(shape);
    }
}

void AddNearStraightWrist(const Pose& pose) {
    std::array<ShoulderSide, 2> shoulders;
    std::array<ElbowShape, 2> elbows;
    Solutions ignored;
    Collector misses(pose.model, pose.target, pose.out.NearValues(), ignored);
    const Vec tip = Origin(pose.target);
    const int sides = SolveShoulder(pose.model, tip, 0, misses, shoulders);
    for (int i = 0; i < sides; ++i) {
        const ShoulderSide& shoulder = shoulders[static_cast<std::size_t>(i)];
        const Planar wrist = Planar{tip.z, shoulder.radial} - pose.arm.plane.shoulder;
        bool singular = false;
        const double sense = i == 0 ? pose.model.front : -pose.model.front;
        const int shapes = SolveElbow(pose.arm.straight, wrist, sense, misses, elbows, singular);
        for (int j = 0; j < shapes; ++j) {
            const ElbowShape& elbow = elbows[static_cast<std::size_t>(j)];
            Shape shape;
            shape.values = {shoulder.value, elbow.second, elbow.third, 0, 0, 0, 0};
            shape.configuration = {i == 0 ? Shoulder::Front : Shoulder::Back,
                                   j == 0 ? Elbow::Up : Elbow::Down, Wrist::NoFlip};
            shape.singular = singular ? ElbowSingular | WristSingular : WristSingular;
            AddNearlyStraight(pose, shape, {shoulder.c, shoulder.s, elbow.both});
        }
    }
}

} // namespace

void SolveCoupled(const ArmModel& model, const CoupledArm& arm, const Rigid& target, Collector& out) {
    Pose pose{model, arm, target, out};
    const CoupledPose equations(Origin(target), Rotate(target, arm.last), model.reach);
    const Stations stations(arm, equations);
    BranchSearch search(arm, equations, AddRoot, &pose);
    search.Run(stations);
    AddNearStraightWrist(pose);
    out.Missed(search.Least());
}

} // namespace planning
