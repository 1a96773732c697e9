#include "Collector.h"

#include <algorithm>
#include <numbers>

namespace planning {

namespace {

/// Values 5 and 6 of one wrist, and the sum of values 2 to 4 that they leave.
struct HandTurn {
    double fifth, sixth;
    Planar turn;
};

/// Axes of the hand in the arm's plane, with value 1 removed.
struct Hand {
    Vec sixth;         ///< axis 6
    Vec lateral;       ///< axis 2, seen from the hand at zero
    Vec first, second; ///< the hand's images of axis 5 at zero and of axis 6 x axis 5
};

Hand HandIn(const ParallelArm& arm, const Rigid& target, const ShoulderSide& shoulder) {
    const auto back = [&](const Vec& a) {
        const Vec v = Rotate(target, a);
        return Vec{shoulder.c * v.x + shoulder.s * v.y, shoulder.c * v.y - shoulder.s * v.x, v.z};
    };
    Hand hand;
    hand.sixth = back(arm.sixth);
    hand.first = back(arm.fifth);
    hand.second = Cross(hand.sixth, hand.first);
    return hand;
}

HandTurn TurnOfHand(const ParallelArm& arm, const Hand& hand, double side, double bent, Collector& out) {
    const bool free = bent < FreeSine;
    // Rotated backwards by value 6, axis 2 is perpendicular to axis 5.
    const double seen = std::atan2(hand.second.y, hand.first.y);
    const double sixth = free ? out.Near(5) : side * std::numbers::pi / 2 - seen;
    const double c = std::cos(sixth);
    const double s = std::sin(sixth);
    const Planar fifthNow = {c * hand.first.z - s * hand.second.z, c * hand.first.x - s * hand.second.x};
    const Planar turn = fifthNow * Conj(InPlane(arm.fifth));
    return {arm.offset + std::atan2(side * bent, hand.sixth.y), sixth, (1 / Abs(turn)) * turn};
}

} // namespace

void SolveParallel(const ArmModel& model, const ParallelArm& arm, const Rigid& target, Collector& out) {
    std::array<ShoulderSide, 2> shoulders;
    std::array<ElbowShape, 2> elbows;
    const Vec centre = Origin(target);
    const int sides = SolveShoulder(model, centre, arm.lateral, out, shoulders);
    for (int i = 0; i < sides; ++i) {
        const ShoulderSide& shoulder = shoulders[static_cast<std::size_t>(i)];
        const Hand hand = HandIn(arm, target, shoulder);
        const double bent = std::hypot(hand.sixth.x, hand.sixth.z);
        const auto singular = static_cast<std::uint8_t>(
            (std::abs(shoulder.radial) < NearSingular * model.reach ? ShoulderSingular : NotSingular) |
            (bent < NearSingular ? WristSingular : NotSingular));
        for (int wrist = 0; wrist < (bent < FreeSine ? 1 : 2); ++wrist) {
            const HandTurn turn = TurnOfHand(arm, hand, wrist == 0 ? model.bend : -model.bend, bent, out);
            const Planar fourth =
                Planar{centre.z, shoulder.radial} - arm.plane.shoulder - turn.turn * arm.hand;
            bool elbowSingular = false;
            const double sense = i == 0 ? model.front : -model.front;
            const int shapes = SolveElbow(arm.plane, fourth, sense, out, elbows, elbowSingular);
            for (int j = 0; j < shapes; ++j) {
                const ElbowShape& elbow = elbows[static_cast<std::size_t>(j)];
                Shape shape;
                const double rest = Arg(turn.turn * Conj(elbow.both));
                shape.values = {shoulder.value,
                                elbow.second,
                                elbow.third,
                                arm.fourthSense * rest,
                                turn.fifth,
                                turn.sixth,
                                0};
                shape.configuration = {i == 0 ? Shoulder::Front : Shoulder::Back,
                                       j == 0 ? Elbow::Up : Elbow::Down,
                                       wrist == 0 ? Wrist::NoFlip : Wrist::Flip};
                shape.singular =
                    static_cast<std::uint8_t>(singular | (elbowSingular ? ElbowSingular : NotSingular));
                out.Add(shape);
            }
        }
    }
}

} // namespace planning
