#include <planning/InverseKinematics.h>

#include "Collector.h"

#include <algorithm>
#include <mechanism/RobotEntity.h>
#include <numbers>
#include <stdexcept>
#include <string>

namespace planning {

namespace {

/// Largest deviation of an entry of R * R^T from the identity: files with ten digits stay below it.
constexpr double RigidTolerance = 1e-6;

ArmTable TableOf(const RobotEntity& robot) {
    ArmTable table;
    table.rows = robot.GetArmDH();
    for (int i = 0; i < robot.GetLinkSize(); ++i) {
        table.limits.push_back(robot.GetLink(static_cast<std::size_t>(i))->GetLimit());
    }
    table.base = robot.GetRobotBaseDHTrsf();
    table.flange = robot.GetEndCenTrsf(0);
    table.tool = robot.GetCurrentToolWithOffset();
    table.coupled = robot.IsCouplingRobot();
    return table;
}

void RequireRigid(const Rigid& pose) {
    bool good = std::isfinite(pose.p[0]) && std::isfinite(pose.p[1]) && std::isfinite(pose.p[2]);
    for (int i = 0; i < 3; ++i) {
        const Vec a = Column(pose, i);
        const Vec b = Column(pose, (i + 1) % 3);
        good = good && std::abs(Dot(a, a) - 1) <= RigidTolerance && std::abs(Dot(a, b)) <= RigidTolerance;
    }
    good = good && Dot(Cross(Column(pose, 0), Column(pose, 1)), Column(pose, 2)) > 0;
    if (!good) {
        throw std::invalid_argument(
            "inverse kinematics: the pose is no rigid transform (finite, orthonormal, right-handed)");
    }
}

} // namespace

const char* Name(Shoulder shoulder) { return shoulder == Shoulder::Front ? "front" : "back"; }
const char* Name(Elbow elbow) { return elbow == Elbow::Up ? "up" : "down"; }
const char* Name(Wrist wrist) { return wrist == Wrist::NoFlip ? "no-flip" : "flip"; }

InverseKinematics::InverseKinematics(const RobotEntity& robot) : InverseKinematics(TableOf(robot)) {}

InverseKinematics::InverseKinematics(const ArmTable& table)
    : model(std::make_shared<const ArmModel>(MakeModel(table))), tool(Rigid::From(table.tool)),
      toolInverse(Inverse(tool)) {}

Solutions InverseKinematics::Flange(const Rigid& X_BF, std::span<const double> reference) const {
    static constexpr std::array<double, MaxJoints> Zeros{};
    RequireRigid(X_BF);
    if (!reference.empty() && reference.size() != Joints()) {
        throw std::invalid_argument("inverse kinematics: " + std::to_string(reference.size()) +
                                    " reference values, expected " + std::to_string(Joints()));
    }
    Solutions solutions;
    Collector out(*model, X_BF, reference.empty() ? Zeros.data() : reference.data(), solutions);
    const Rigid target = model->toCanonical * X_BF * model->wristInFlange;
    if (const auto* ordinary = std::get_if<OrdinaryArm>(&model->kind)) {
        SolveOrdinary(*model, *ordinary, target, out);
    } else if (const auto* parallel = std::get_if<ParallelArm>(&model->kind)) {
        SolveParallel(*model, *parallel, target, out);
    } else {
        SolveCoupled(*model, std::get<CoupledArm>(model->kind), target, out);
    }
    if (!solutions.empty()) {
        solutions.outcome = Outcome::Solved;
    } else if (solutions.excess == 0) {
        solutions.outcome = Outcome::OutsideLimits;
    }
    return solutions;
}

Solutions InverseKinematics::ToolCentre(const Rigid& X_BT, std::span<const double> reference) const {
    return Flange(X_BT * toolInverse, reference);
}

void InverseKinematics::RequireCount(std::span<const double> values) const {
    if (values.size() < Joints()) {
        throw std::invalid_argument("inverse kinematics: " + std::to_string(values.size()) +
                                    " values, expected " + std::to_string(Joints()));
    }
}

Rigid InverseKinematics::FlangeAt(std::span<const double> values) const {
    RequireCount(values);
    return model->chain.FlangeAt(values.data());
}

Jacobian InverseKinematics::JacobianAt(std::span<const double> values) const {
    RequireCount(values);
    Rigid flange;
    Jacobian jacobian = IndependentJacobian(*model, values.data(), flange);
    const Vec lever = Rotate(flange, Origin(tool));
    for (std::size_t i = 0; i < jacobian.count; ++i) {
        auto& column = jacobian.columns[i];
        const Vec more = Cross({column[3], column[4], column[5]}, lever);
        column[0] += more.x;
        column[1] += more.y;
        column[2] += more.z;
    }
    return jacobian;
}

InverseKinematics InverseKinematics::WithoutLimits() const {
    InverseKinematics free(*this);
    auto wide = std::make_shared<ArmModel>(*model);
    wide->limits.fill({-std::numbers::pi, std::numbers::pi});
    free.model = std::move(wide);
    return free;
}

double InverseKinematics::Reach() const { return model->reach; }

std::size_t InverseKinematics::Joints() const { return model->chain.count; }
const std::pair<double, double>& InverseKinematics::Limit(std::size_t joint) const {
    return model->limits.at(joint);
}
bool InverseKinematics::Coupled() const { return model->coupled; }

} // namespace planning
