#include <planning/CarriedArm.h>

#include "Vec.h"

#include <mechanism/RobotEntity.h>
#include <stdexcept>
#include <string>

namespace planning {

namespace {

Vec ToVec(const std::array<double, 3>& a) { return {a[0], a[1], a[2]}; }

/// A rotation about an axis through a point.
Rigid TurnAbout(const Vec& axis, const Vec& point, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const auto turned = [&](const Vec& a) { return Turned(axis, c, s, a); };
    return FromColumns(turned({1, 0, 0}), turned({0, 1, 0}), turned({0, 0, 1}), point - turned(point));
}

CarrierChain PlaceOf(const RobotEntity& robot) {
    const GenericEntity* carrier = robot.GetMountingEntity();
    if (carrier == nullptr) {
        return CarrierChain(robot.GetRootMdlTrsf());
    }
    CarrierChain chain(*carrier, robot.GetInstallIndex());
    chain.Extend(robot.GetAssembleTrsf());
    return chain;
}

} // namespace

CarrierChain::CarrierChain(const gp_Trsf& place) : base(Rigid::From(place)) {}

CarrierChain::CarrierChain(const GenericEntity& entity, int flangeIndex) {
    const Flange* mount = entity.GetFlangeByIndex(flangeIndex);
    if (mount == nullptr) {
        throw std::out_of_range(entity.GetName() + ": flange " + std::to_string(flangeIndex) +
                                ", expected 0 to " + std::to_string(entity.GetFlangeSize() - 1));
    }
    base = Rigid::From(entity.GetRootMdlTrsf());
    for (const LinkRod* link = mount->link; link != nullptr; link = link->parent) {
        joints.insert(joints.begin(), JointOf(*link));
    }
    flange = Rigid::From(mount->GetTrsf());
}

CarrierChain::Joint CarrierChain::JointOf(const LinkRod& link) {
    const gp_Pnt origin = link.jointType == JointRotary ? link.axis.Location() : gp_Pnt();
    const gp_Dir& direction = link.axis.Direction();
    return {Rigid::From(link.GetCenterTrsf()),
            {origin.X(), origin.Y(), origin.Z()},
            {direction.X(), direction.Y(), direction.Z()},
            link.jointType == JointLinear,
            link.jointType != JointLinear && link.jointType != JointFixed,
            link.GetLimit()};
}

void CarrierChain::Extend(const gp_Trsf& mounted) { flange = flange * Rigid::From(mounted); }

Rigid CarrierChain::Place(const Rigid& before, const Joint& joint, double value) const {
    Rigid motion;
    if (joint.turns) {
        motion = TurnAbout(ToVec(joint.direction), ToVec(joint.origin), value);
    } else if (joint.slides) {
        for (std::size_t i = 0; i < 3; ++i) {
            motion.p[i] = value * joint.direction[i];
        }
    }
    return before * joint.center * motion;
}

Rigid CarrierChain::FlangeAt(std::span<const double> values) const {
    if (values.size() != joints.size()) {
        throw std::invalid_argument("carrier: " + std::to_string(values.size()) + " values, expected " +
                                    std::to_string(joints.size()));
    }
    Rigid frame = base;
    for (std::size_t i = 0; i < joints.size(); ++i) {
        frame = Place(frame, joints[i], values[i]);
    }
    return frame * flange;
}

std::array<double, 3> CarrierChain::DirectionAt(std::size_t axis, std::span<const double> values) const {
    if (values.size() != joints.size()) {
        FlangeAt(values);
    }
    Rigid frame = base;
    for (std::size_t i = 0; i < axis; ++i) {
        frame = Place(frame, joints[i], values[i]);
    }
    const Vec world = Rotate(frame * joints.at(axis).center, ToVec(joints[axis].direction));
    return {world.x, world.y, world.z};
}

void CarrierChain::AppendColumns(std::span<const double> values, const Rigid& point, double sign,
                                 Jacobian& out) const {
    Rigid frame = base;
    for (std::size_t i = 0; i < joints.size(); ++i) {
        const Joint& joint = joints[i];
        frame = Place(frame, joint, values[i]);
        const Vec axis = sign * Rotate(frame, ToVec(joint.direction));
        const Vec arm = Origin(point) - Apply(frame, ToVec(joint.origin));
        const Vec linear = joint.slides ? axis : joint.turns ? Cross(axis, arm) : Vec{};
        const Vec angular = joint.turns ? axis : Vec{};
        out.columns.at(out.count++) = {linear.x, linear.y, linear.z, angular.x, angular.y, angular.z};
    }
}

CarriedArm::CarriedArm(const RobotEntity& robot, const GenericEntity* holder_, int flange)
    : arm(robot), carrier(PlaceOf(robot)),
      holder(holder_ != nullptr ? CarrierChain(*holder_, flange) : CarrierChain(gp_Trsf())) {
    if (6 + carrier.Axes() + holder.Axes() > MaxAxes) {
        throw std::invalid_argument("carried arm: " + std::to_string(6 + carrier.Axes() + holder.Axes()) +
                                    " axes, expected at most " + std::to_string(MaxAxes));
    }
}

Solutions CarriedArm::SolveInWorld(const Rigid& X_WT, std::span<const double> carrierValues,
                                   std::span<const double> reference) const {
    return arm.ToolCentre(Inverse(carrier.FlangeAt(carrierValues)) * X_WT, reference);
}

Solutions CarriedArm::SolveOnWork(const Rigid& X_HT, const AxisValues& values) const {
    return SolveInWorld(holder.FlangeAt(values.holder) * X_HT, values.carrier, values.arm);
}

Rigid CarriedArm::ToolCentreInWorld(const AxisValues& values) const {
    return carrier.FlangeAt(values.carrier) * arm.ToolCentreAt(values.arm);
}

Rigid CarriedArm::ToolCentreOnWork(const AxisValues& values) const {
    return Inverse(holder.FlangeAt(values.holder)) * ToolCentreInWorld(values);
}

Jacobian CarriedArm::JacobianAt(const AxisValues& values) const {
    const Rigid base = carrier.FlangeAt(values.carrier);
    const Rigid tool = ToolCentreInWorld(values);
    Jacobian jacobian = arm.JacobianAt(values.arm);
    for (std::size_t i = 0; i < jacobian.count; ++i) {
        auto& column = jacobian.columns[i];
        const Vec linear = Rotate(base, {column[0], column[1], column[2]});
        const Vec angular = Rotate(base, {column[3], column[4], column[5]});
        column = {linear.x, linear.y, linear.z, angular.x, angular.y, angular.z};
    }
    carrier.AppendColumns(values.carrier, tool, 1, jacobian);
    holder.FlangeAt(values.holder);
    holder.AppendColumns(values.holder, tool, -1, jacobian);
    return jacobian;
}

} // namespace planning
