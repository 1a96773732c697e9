#pragma once

#include <planning/InverseKinematics.h>
#include <planning/Jacobian.h>

class GenericEntity;
class LinkRod;

namespace planning {

/// Axes from an entity's place in the world to one of its flanges, as plain numbers.
class PLANNING_EXPORT CarrierChain {
public:
    /// A place that does not move.
    explicit CarrierChain(const gp_Trsf& place);
    /// The chain to a flange, where the entity stands now.
    /// @throws std::out_of_range naming the flange where there is none.
    CarrierChain(const GenericEntity& entity, int flangeIndex);

    /// Adds a fixed frame behind the flange.
    void Extend(const gp_Trsf& mounted);
    std::size_t Axes() const { return joints.size(); }
    /// Frame of the flange in the world. @param values rad or mm, one an axis, the first axis first.
    /// @throws std::invalid_argument for another count.
    Rigid FlangeAt(std::span<const double> values) const;
    /// Columns of the axes for a point in the world that the flange carries; `sign` -1 for the motion of the
    /// world as the flange sees it.
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
        std::array<double, 3> origin, direction; ///< of its axis, in its frame
        bool slides, turns;
        std::pair<double, double> limit;
    };
    Rigid Place(const Rigid& before, const Joint& joint, double value) const;
    static Joint JointOf(const LinkRod& link);

    Rigid base;
    std::vector<Joint> joints;
    Rigid flange;
};

/// Values of everything that moves a tool against its work: rad, or mm of axes that slide.
struct AxisValues {
    std::span<const double> arm;          ///< all joint values
    std::span<const double> carrier = {}; ///< of the rail or pedestal below the arm
    std::span<const double> holder = {};  ///< of the positioner that holds the work
};

/// An arm where it stands: on the ground or on a flange of a carrier, and what holds its work.
///
/// The places of all entities are those at the time of construction; afterwards the object is immutable and
/// may be shared between threads.
class PLANNING_EXPORT CarriedArm {
public:
    /// @param holder positioner whose flange number `flange` carries the work; null where the work is in the
    /// world.
    /// @throws as InverseKinematics and CarrierChain.
    explicit CarriedArm(const RobotEntity& robot, const GenericEntity* holder = nullptr, int flange = 0);

    const InverseKinematics& Arm() const { return arm; }
    const CarrierChain& Carrier() const { return carrier; }
    const CarrierChain& Holder() const { return holder; }

    /// Joint values for a tool centre pose X_WT in the world.
    /// @param reference as InverseKinematics::Flange. @throws std::invalid_argument as that, or for a wrong
    /// count of values.
    Solutions SolveInWorld(const Rigid& X_WT, std::span<const double> carrierValues = {},
                           std::span<const double> reference = {}) const;
    /// Joint values for a tool centre pose X_HT in the frame of the holder's flange.
    Solutions SolveOnWork(const Rigid& X_HT, const AxisValues& values) const;

    /// X_WT and X_HT at given values.
    Rigid ToolCentreInWorld(const AxisValues& values) const;
    Rigid ToolCentreOnWork(const AxisValues& values) const;

    /// Jacobian of the tool centre: six columns of the arm (a coupled wrist's values 5 and 6 are one), then
    /// the carrier's axes, then the holder's. The latter move the tool as its work sees it, in directions of
    /// the world.
    Jacobian JacobianAt(const AxisValues& values) const;

private:
    InverseKinematics arm;
    CarrierChain carrier;
    CarrierChain holder;
};

} // namespace planning
