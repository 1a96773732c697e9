#pragma once

#include "ArmModel.h"

#include <planning/Jacobian.h>

namespace planning {

/// A solution closer to a singularity than this (sine, or fraction of the reach) is marked as singular.
inline constexpr double NearSingular = 1e-4;
/// Closer to a singularity than this (sine), the value that it leaves free is taken from the reference: far
/// above the rounding of a pose's matrix, far below the accuracy required of a solution.
inline constexpr double FreeSine = 1e-11;
/// Poses beyond the reach by at most this (mm) count as on its boundary.
inline constexpr double ReachTolerance = 5e-8;

/// One arm shape before limits and whole turns are applied.
struct Shape {
    std::array<double, MaxJoints> values{};
    Configuration configuration{};
    std::uint8_t singular = NotSingular;
};

/// Adds shapes to a pose's solutions: refined where the table requires it, within the limits, without
/// duplicates.
class Collector {
public:
    Collector(const ArmModel& model_, const Rigid& pose_, const double* reference_, Solutions& out_)
        : model(model_), pose(pose_), reference(reference_), out(out_) {}

    double Near(std::size_t joint) const { return reference[joint]; }
    const double* NearValues() const { return reference; }
    /// Whether some whole turn of a value is within the joint's limits; if not, the shape counts as outside
    /// them.
    bool HasTurn(std::size_t joint, double value);
    void Add(Shape& shape);
    /// Adds the solution to which a first guess converges.
    void AddGuess(const Shape& guess);
    /// Records that a shape misses the pose by this distance, mm.
    void Missed(double excess) { out.excess = excess < out.excess ? excess : out.excess; }

private:
    bool IsKnown(const Solution& solution) const;
    bool TakeTurns(std::array<double, MaxJoints>& values) const;

    const ArmModel& model;
    const Rigid& pose;
    const double* reference;
    Solutions& out;
};

/// The values of joint 1 for a point that the arm's plane must contain at a lateral offset.
struct ShoulderSide {
    double radial; ///< of the point in the arm's plane, mm; its sign is the side
    double c, s;   ///< of value 1
    double value;
};
/// @return the number of sides: 0 (recorded as missed), 1 or 2; the arm's front is the first.
int SolveShoulder(const ArmModel& model, const Vec& point, double lateral, Collector& out,
                  std::array<ShoulderSide, 2>& sides);

/// Values 2 and 3 that bring the wrist to a point of the arm's plane.
struct ElbowShape {
    Planar both; ///< turn by both, e^(i angle)
    double second, third;
};
/// @param target from joint 2. @param sense +1 where the shoulder's side is positive.
/// @return the number: 0 (recorded as missed), 1 or 2; elbow up is the first.
int SolveElbow(const PlaneArm& plane, const Planar& target, double sense, Collector& out,
               std::array<ElbowShape, 2>& shapes, bool& singular);

void SolveOrdinary(const ArmModel& model, const OrdinaryArm& arm, const Rigid& target, Collector& out);
void SolveParallel(const ArmModel& model, const ParallelArm& arm, const Rigid& target, Collector& out);
void SolveCoupled(const ArmModel& model, const CoupledArm& arm, const Rigid& target, Collector& out);

/// Newton's method on the table itself. @return whether the pose is met to 1e-9 mm and 1e-12 in the matrix,
/// or as near as rounding allows.
bool Polish(const ArmModel& model, const Rigid& pose, double* values);

/// Smallest singular value of the arm's Jacobian, lengths in units of its reach; value 5 and 6 of a coupled
/// wrist count as one.
double SmallestSingularValue(const ArmModel& model, const double* values);
/// Jacobian of the flange by the independent joints, in the robot's base.
Jacobian IndependentJacobian(const ArmModel& model, const double* values, Rigid& flange);

} // namespace planning
