#pragma once

#include <array>
#include <gp_Trsf.hxx>
#include <host/tools/Rigid.h>
#include <memory>
#include <planning/Jacobian.h>
#include <planning/Solutions.h>
#include <span>
#include <utility>
#include <vector>

class RobotEntity;

namespace planning {

struct ArmModel;

/// Kinematic parameters of an arm.
struct ArmTable {
    /// One row a joint: a (mm), alpha (rad), d (mm), theta (rad); proximal convention.
    std::vector<std::array<double, 4>> rows;
    /// Minimum and maximum of each joint, rad.
    std::vector<std::pair<double, double>> limits;
    gp_Trsf base;         ///< X_BA: frame that the table starts from, in the robot's base
    gp_Trsf flange;       ///< X_EF: flange in the frame of the last row
    gp_Trsf tool;         ///< X_FT: tool centre in the flange
    bool coupled = false; ///< seven rows, and value 6 is minus value 5
};

/// All joint values of a robot arm for a pose of its flange or tool centre.
///
/// Three kinds of arms are solved: ordinary ones (joints 2 and 3 parallel and square to joint 1, a wrist
/// whose three axes meet), those with three parallel axes (joints 2 to 4, then two square wrist axes), and
/// those with a coupled oblique wrist (seven links, value 6 = minus value 5, neighbouring wrist axes meet).
/// The kind follows from the table's geometry. The first two have closed forms; the third is searched in
/// value 5. A table whose wrist misses its kind by up to 1 mm or 0.01 rad is solved as that kind and then
/// refined on the true table.
///
/// Objects are immutable and may be shared between threads; a solve allocates nothing. Lengths mm, angles
/// rad.
class PLANNING_EXPORT InverseKinematics {
public:
    /// Takes table, structure, limits, flange and current tool with its offset, as they are now.
    /// @throws std::invalid_argument for an arm of a kind that has no solver, naming what does not fit.
    explicit InverseKinematics(const RobotEntity& robot);
    /// @throws std::invalid_argument as above, and naming the row or limit for numbers that describe no arm.
    explicit InverseKinematics(const ArmTable& table);

    /// Solutions of a flange pose X_BF in the robot's base.
    /// @param reference one number a joint, zeros where empty: whole turns, and values that a singularity
    /// leaves free, are chosen nearest to it.
    /// @throws std::invalid_argument for a pose that is no rigid transform, or a wrong count of `reference`.
    Solutions Flange(const Rigid& X_BF, std::span<const double> reference = {}) const;
    /// The same for a tool centre pose X_BT.
    Solutions ToolCentre(const Rigid& X_BT, std::span<const double> reference = {}) const;

    /// Calls `each` with every variant of the values by whole turns within the limits, the given one
    /// included.
    template <typename Each>
    void ForEachTurn(const Solution& solution, Each&& each) const;

    /// Flange pose X_BF at joint values, one a joint.
    Rigid FlangeAt(std::span<const double> values) const;
    /// Tool centre pose X_BT at joint values.
    Rigid ToolCentreAt(std::span<const double> values) const { return FlangeAt(values) * tool; }

    /// Jacobian of the tool centre in the robot's base: six columns, values 5 and 6 of a coupled wrist as
    /// one.
    Jacobian JacobianAt(std::span<const double> values) const;
    /// Length of upper arm and forearm together, mm: the unit of length for singular values of the Jacobian.
    double Reach() const;

    /// The same arm with every joint free to turn all the way round: what the true limits forbid.
    InverseKinematics WithoutLimits() const;

    /// Number of joints: 6, or 7 with a coupled wrist.
    std::size_t Joints() const;
    /// Limits in force, rad; of a coupled wrist's fifth and sixth value each bounds the other.
    const std::pair<double, double>& Limit(std::size_t joint) const;
    /// Whether value 6 is minus value 5.
    bool Coupled() const;

private:
    void RequireCount(std::span<const double> values) const;

    std::shared_ptr<const ArmModel> model;
    Rigid tool;
    Rigid toolInverse;
};

/// Steps through the whole turns of values within limits.
class PLANNING_EXPORT TurnCounter {
public:
    /// @param solver is referred to, not copied. @param start the solution whose turns are enumerated.
    TurnCounter(const InverseKinematics& solver, const Solution& start);
    /// The present variant.
    const Solution& Current() const { return current; }
    /// Goes to the next variant. @return false, at the first variant again, when there is none.
    bool Next();

private:
    void ToLowest(std::size_t joint);

    const InverseKinematics& solver;
    Solution current;
};

template <typename Each>
void InverseKinematics::ForEachTurn(const Solution& solution, Each&& each) const {
    TurnCounter counter(*this, solution);
    do {
        each(counter.Current());
    } while (counter.Next());
}

} // namespace planning
