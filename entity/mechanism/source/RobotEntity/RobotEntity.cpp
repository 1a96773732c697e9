#include <mechanism/RobotEntity.h>

#include "Checked.h"
#include "Failure.h"

#include <algorithm>
#include <host/tools/ArmFacts.h>
#include <host/tools/CADParamConfig.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/RobotWorkspace.h>
#include <numbers>

using namespace mechanism_detail;

namespace {

/// Value of the system argument that requests limits in the order of the coupling's index list.
constexpr size_t CouplingListSystem = 666;

constexpr double AxisCollisionTolerance = 5.0;
constexpr double HangingCone = 20.0 * std::numbers::pi / 180.0;
constexpr double ClosingRatio = 0.65;

} // namespace

RobotEntity::RobotEntity() { mechanismType = MechanismRobot; }

RobotEntity::RobotEntity(GenericEntity* parent) : GenericEntityConfig(parent) {
    mechanismType = MechanismRobot;
    RobotEntity::Initial();
}

RobotEntity::~RobotEntity() {
    if (workspace) {
        workspace->ShowWorkspaceShape(false, ClosingRatio);
    }
}

void RobotEntity::Initial() {
    rootLink = GetRootLink(0);
    UpdateInfo();
    workspace = std::make_shared<RobotWorkspace>();
    workspace->SetRobot(this);
    AddSystem(GetHashIndex());
}

void RobotEntity::UpdateInfo() {
    UpdateToolByDH();
    Normalized();
    UpdateToolFrame();
}

void RobotEntity::UpdateModelPara() {
    const auto& defaults = CADParamConfig::GetInstance()->defaultRobotValues;
    initialValues.resize(static_cast<std::size_t>(GetDOF(0)));
    std::copy_n(defaults.begin(), std::min(defaults.size(), initialValues.size()), initialValues.begin());
}

void RobotEntity::SetCurrentValue(const std::vector<double>& values, size_t system) {
    GenericEntityConfig::SetCurrentValue(values, system);
    if (IsCouplingRobot() && currentValues.size() > ArmFacts::WristFollower) {
        currentValues[ArmFacts::WristFollower] = -currentValues[ArmFacts::WristLeader];
    }
}

// --- axes --------------------------------------------------------------------------------------------------

LinkRod* RobotEntity::GetAxis(int axis) const {
    if (axis < 1 || axis > GetLinkSize()) {
        Fail(family::RobotEntity, __LINE__, "RobotEntity::GetAxis", "vector传入index错误，数据不在范围内");
    }
    return GetLink(static_cast<std::size_t>(axis - 1));
}

const gp_Trsf& RobotEntity::GetCurJointTrsf(int position) const { return At(links, position)->worldTrsf; }

gp_Pnt RobotEntity::GetLinkRodsLocation(int position) const {
    return position > GetLinkSize() ? gp_Pnt() : At(links, position)->GetJointOrigin();
}

std::vector<gp_Pnt> RobotEntity::GetLinkJointPos() const {
    std::vector<gp_Pnt> positions;
    for (int position = 1; position <= 6; ++position) {
        const LinkRod& link = *At(links, position);
        positions.push_back(link.GetJointOrigin().Transformed(link.worldTrsf));
    }
    return positions;
}

bool RobotEntity::IsRobotUp() const {
    const gp_Dir up(GetRobotAssembleTrsf().HVectorialPart().Column(3));
    return std::numbers::pi - up.Angle(gp::DZ()) > HangingCone;
}

std::vector<std::pair<double, double>> RobotEntity::GetLimit(size_t system, double margin) {
    const CoupedValue& coupled = GrpConfig::GetCoupledValue(GetHashIndex());
    const bool alongList = system == CouplingListSystem && coupled.enabled;
    std::vector<std::pair<double, double>> limits;
    std::size_t k = 0;
    for (int i = coupled.index[0]; i < GetLinkSize();) {
        const auto& [low, high] = At(links, i)->GetLimit();
        if (!(low + margin <= high - margin)) {
            Fail(family::RobotEntity, __LINE__, "RobotEntity::GetLimit", "限位错误");
        }
        limits.emplace_back(low + margin, high - margin);
        if (!alongList) {
            ++i;
        } else if (++k < std::size(coupled.index)) {
            i = coupled.index[k];
        } else {
            break;
        }
    }
    return limits;
}

// --- display -----------------------------------------------------------------------------------------------

void RobotEntity::UpdateCollisionMdlState() {
    for (int axis = 1; axis <= GetRobotDOF(); ++axis) {
        for (const auto& model : GetAxis(axis)->models) {
            if (!model.IsNull()) {
                model->collisionTolerance = AxisCollisionTolerance;
            }
        }
    }
}

void RobotEntity::Hide(size_t system) {
    if (unsafeWorkspaceMdl.IsNull()) {
        GenericEntityConfig::Hide(system);
        return;
    }
    const bool wasDisplayed = unsafeWorkspaceMdl->IsDisplayed();
    const auto silence = [&] {
        unsafeWorkspaceMdl->SetSelectionMode(-1, false);
        unsafeWorkspaceMdl->SetUnSelected(true);
    };
    silence();
    unsafeWorkspaceMdl->RedisplayShape(false, false);
    GenericEntityConfig::Hide(system);
    silence();
    if (wasDisplayed) {
        unsafeWorkspaceMdl->RedisplayShape(false, false);
    } else {
        unsafeWorkspaceMdl->Hide();
    }
}
