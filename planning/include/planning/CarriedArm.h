#pragma once

#include <planning/InverseKinematics.h>
#include <planning/Jacobian.h>

class GenericEntity;
class LinkRod;

namespace planning {

/// The chain of axes from an entity's placement in the world to one of its flanges.
class PLANNING_EXPORT CarrierChain {
public:
    /// A chain without axes. @param place frame of its flange in the world, mm.
    explicit CarrierChain(const gp_Trsf& place);
    /// The chain to a flange, from the entity's present placement.
    /// @throws std::out_of_range naming the flange where there is none.
    CarrierChain(const GenericEntity& entity, int flangeIndex);

    /// Appends a fixed frame, relative to the flange: the result is the new flange.
    void Extend(const gp_Trsf& mounted);
    /// Number of axes.
    std::size_t Axes() const { return joints.size(); }
    /// Frame of the flange in the world. @param values rad or mm, one an axis, the first axis first.
    /// @throws std::invalid_argument for another count.
    Rigid FlangeAt(std::span<const double> values) const;
    /// Appends one Jacobian column an axis for a point (world frame) that moves with the flange.
    /// @param sign 1, or -1 for the motion of the world relative to the flange.
    void AppendColumns(std::span<const double> values, const Rigid& point, double sign, Jacobian& out) const;

    /// Whether an axis slides; all others turn.
    bool Slides(std::size_t axis) const { return joints.at(axis).slides; }
    /// Limits of an axis, rad or mm.
    const std::pair<double, double>& Limit(std::size_t axis) const { return joints.at(axis).limit; }
    /// Direction of an axis in the world. @throws as FlangeAt.
    std::array<double, 3> DirectionAt(std::size_t axis, std::span<const double> values) const;

private:
    struct Joint {
        Rigid center;
        std::array<double, 3> origin, direction; ///< of the joint axis, in the joint's frame
        bool slides, turns;                      ///< neither for a fixed joint
        std::pair<double, double> limit;         ///< rad or mm
    };
    Rigid Place(const Rigid& before, const Joint& joint, double value) const;
    static Joint JointOf(const LinkRod& link);

    Rigid base;
    std::vector<Joint> joints;
    Rigid flange;
};

/// Values of all axes that move a tool relative to its work: rad, or mm of axes that slide.
struct AxisValues {
    std::span<const double> arm;          ///< all joint values
    std::span<const double> carrier = {}; ///< of the rail or pedestal below the arm
    std::span<const double> holder = {};  ///< of the positioner that holds the work
};

/// An arm on the ground or on a flange of a carrier (rail, pedestal), with the positioner that holds its
/// work.
///
/// All placements are those at the time of construction; afterwards the object is immutable and may be shared
/// between threads.
class PLANNING_EXPORT CarriedArm {
public:
    /// @param holder positioner whose flange number `flange` carries the work; null where the work is in the
    /// world.
    /// @throws as InverseKinematics and CarrierChain.
    explicit CarriedArm(const RobotEntity& robot, const GenericEntity* holder = nullptr, int flange = 0);

    /// Inverse kinematics of the arm alone.
    const InverseKinematics& Arm() const { return arm; }
    /// From the world to the arm's base.
    const CarrierChain& Carrier() const { return carrier; }
    /// From the world to the flange that holds the work.
    const CarrierChain& Holder() const { return holder; }

    /// Joint values for a tool centre pose X_WT in the world.
    /// @param reference as InverseKinematics::Flange. @throws std::invalid_argument as that, or for a wrong
    /// count of values.
    Solutions SolveInWorld(const Rigid& X_WT, std::span<const double> carrierValues = {},
                           std::span<const double> reference = {}) const;
    /// Joint values for a tool centre pose X_HT in the frame of the holder's flange.
    Solutions SolveOnWork(const Rigid& X_HT, const AxisValues& values) const;

    /// Tool centre pose X_WT in the world, at given values.
    Rigid ToolCentreInWorld(const AxisValues& values) const;
    /// Tool centre pose X_HT in the frame of the holder's flange, at given values.
    Rigid ToolCentreOnWork(const AxisValues& values) const;

    /// Jacobian of the tool centre: six columns of the arm (a coupled wrist's values 5 and 6 are one), then
    /// the carrier's axes, then the holder's. The latter give the tool's motion relative to the work,
    /// expressed in the world.
    Jacobian JacobianAt(const AxisValues& values) const;

private:
    InverseKinematics arm;
    CarrierChain carrier;
    CarrierChain holder;
};

} // namespace planning
