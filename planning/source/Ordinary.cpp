#include "Collector.h"

#include <algorithm>
#include <numbers>

namespace planning {

namespace {

/// The rotation that joints 4 to 6 must produce, by columns of the last joint's frame in link 3's at zero:
/// Rz(a) * Ry(b) * Rz(c) in the frame of axes 4 and 5.
struct WristTurn {
    double xx, yx, xy, yy; ///< first two rows of the first two columns
    double xz, yz, zz;     ///< third column
};

WristTurn TurnOfWrist(const OrdinaryArm& arm, const Rigid& target, const ShoulderSide& shoulder,
                      const Planar& both) {
    Vec columns[3];
    for (int i = 0; i < 3; ++i) {
        const Vec column = Column(target, i);
        const double x = shoulder.c * column.x + shoulder.s * column.y;
        columns[i] = {both.re * x - both.im * column.z, shoulder.c * column.y - shoulder.s * column.x,
                      both.im * x + both.re * column.z};
    }
    return {Dot(arm.across, columns[0]), Dot(arm.fifth, columns[0]),  Dot(arm.across, columns[1]),
            Dot(arm.fifth, columns[1]),  Dot(arm.across, columns[2]), Dot(arm.fifth, columns[2]),
            Dot(arm.fourth, columns[2])};
}

/// Both wrists of a given arm.
void AddWrists(const ArmModel& model, const OrdinaryArm& arm, const WristTurn& turn, Shape& shape,
               Collector& out) {
    const double bent = std::sqrt(turn.xz * turn.xz + turn.yz * turn.yz);
    const bool free = bent < FreeSine;
    shape.singular |= bent < NearSingular ? WristSingular : NotSingular;
    const double fourth = free ? out.Near(3) : std::atan2(turn.yz, turn.xz);
    const double c = free ? std::cos(fourth) : turn.xz / bent;
    const double s = free ? std::sin(fourth) : turn.yz / bent;
    const double fifth = std::atan2(bent, turn.zz);
    const double sixth = std::atan2(c * turn.yx - s * turn.xx, c * turn.yy - s * turn.xy);
    double side = model.bend;
    for (int wrist = 0; wrist < (free ? 1 : 2); ++wrist) {
        const double flipped = side < 0 ? std::numbers::pi : 0;
        shape.values[3] = fourth + flipped;
        shape.values[4] = side * fifth + arm.offset;
        shape.values[5] = sixth + flipped;
        shape.configuration.wrist = side == model.bend ? Wrist::NoFlip : Wrist::Flip;
        out.Add(shape);
        side = -side;
    }
}

} // namespace

void SolveOrdinary(const ArmModel& model, const OrdinaryArm& arm, const Rigid& target, Collector& out) {
    std::array<ShoulderSide, 2> shoulders;
    std::array<ElbowShape, 2> elbows;
    const Vec centre = Origin(target);
    const int sides = SolveShoulder(model, centre, arm.lateral, out, shoulders);
    for (int i = 0; i < sides; ++i) {
        const ShoulderSide& shoulder = shoulders[static_cast<std::size_t>(i)];
        const Planar wrist = Planar{centre.z, shoulder.radial} - arm.plane.shoulder;
        const bool shoulderSingular = std::abs(shoulder.radial) < NearSingular * model.reach;
        bool elbowSingular = false;
        const double sense = i == 0 ? model.front : -model.front;
        const int shapes = SolveElbow(arm.plane, wrist, sense, out, elbows, elbowSingular);
        for (int j = 0; j < shapes; ++j) {
            const ElbowShape& elbow = elbows[static_cast<std::size_t>(j)];
            Shape shape;
            shape.values[0] = shoulder.value;
            shape.values[1] = elbow.second;
            shape.values[2] = elbow.third;
            shape.configuration = {i == 0 ? Shoulder::Front : Shoulder::Back,
                                   j == 0 ? Elbow::Up : Elbow::Down, Wrist::NoFlip};
            shape.singular = static_cast<std::uint8_t>((shoulderSingular ? ShoulderSingular : NotSingular) |
                                                       (elbowSingular ? ElbowSingular : NotSingular));
            AddWrists(model, arm, TurnOfWrist(arm, target, shoulder, elbow.both), shape, out);
        }
    }
}

} // namespace planning
