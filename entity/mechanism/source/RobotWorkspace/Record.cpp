#include "Checked.h"

#include <algorithm>
#include <iterator>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>

using namespace mechanism_detail;

namespace {

/// Distance of the limits used from the joint stops: three degrees, and one unit for the carrier's axes.
constexpr double JointMargin = 0.05235987755982988;
constexpr double CarrierMargin = 1.0;
constexpr double MillimetresPerMetre = 1000.0;

void FillLimits(RobotEntity& robot, WorkSpace::Robot& record) {
    const auto limits = robot.GetLimit(0, JointMargin);
    const int count = std::min(robot.GetDOF(0), static_cast<int>(std::size(record.jointMin)));
    for (int joint = 0; joint < count; ++joint) {
        const auto& [low, high] = At(limits, joint);
        record.jointMin[joint] = low;
        record.jointMax[joint] = high;
    }
}

void FillCarrier(const RobotEntity& robot, WorkSpace::Robot& record) {
    GenericEntity* carrier = robot.GetMountingEntity();
    if (carrier == nullptr) {
        return;
    }
    const auto limits = carrier->GetLimit(robot.GetHashIndex(), CarrierMargin);
    const std::size_t count = std::min(limits.size(), std::size(record.externalLimits));
    for (std::size_t axis = 0; axis < count; ++axis) {
        record.externalLimits[axis][0] = limits[axis].first;
        record.externalLimits[axis][1] = limits[axis].second;
    }
}

void FillBase(const gp_Trsf& base, WorkSpace::Robot& record) {
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            record.base[4 * row + column] =
                base.ScaleFactor() * base.HVectorialPart().Value(row + 1, column + 1);
        }
        record.base[4 * row + 3] = base.TranslationPart().Coord(row + 1);
    }
}

void FillTool(const gp_Trsf& tool, WorkSpace::Robot& record) {
    for (int row = 0; row < 3; ++row) {
        record.toolOffset[row] = tool.TranslationPart().Coord(row + 1) / MillimetresPerMetre;
        for (int column = 0; column < 3; ++column) {
            record.toolRotation[3 * row + column] = tool.HVectorialPart().Value(row + 1, column + 1);
        }
    }
}

} // namespace

void RobotWorkspace::CalWorkDate(WorkSpace::Robot& record) const {
    if (robot == nullptr) {
        return;
    }
    record.dh = robot->GetArmDH();
    FillLimits(*robot, record);
    FillCarrier(*robot, record);
    FillBase(robot->GetRobotAssembleTrsf(), record);
    FillTool(robot->GetToolFromVector(robot->GetToolIndex()), record);
    record.upright = robot->IsRobotUp();
    record.armStructureCode = robot->GetArmStructureCode();
}

std::array<double, 4> RobotWorkspace::GetRobotMaxWorkSpace(RobotEntity* robot) {
    if (robot == nullptr) {
        return {};
    }
    RobotWorkspace workspace;
    workspace.SetRobot(robot);
    WorkSpace::Robot record;
    workspace.CalWorkDate(record);
    return WorkSpace::GetRobotMaxWorkSpace(record);
}
