#include <climits>
#include <host/tools/CADParamConfig.h>
#include <host/tools/gpHandle.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/ToolEntity.h>

namespace {

constexpr double EmptySlot = 1e-7;
constexpr double WideGap = 20.0;
constexpr double TightGap = 2.0;
constexpr double OtherGap = 30.0;

double CollisionGap(CheckCollisionState state) {
    switch (state) {
    case CollisionNormal:
        return CADParamConfig::GetInstance()->defaultCollisionGap;
    case CollisionWide:
        return WideGap;
    case CollisionTight:
        return TightGap;
    }
    return OtherGap;
}

} // namespace

ToolEntity* RobotEntity::GetToolEntity() const {
    return flanges.empty() ? nullptr : dynamic_cast<ToolEntity*>(flanges.front()->attached);
}

void RobotEntity::UpdateAssembleData() {
    ToolEntity* tool = GetToolEntity();
    if (tool == nullptr) {
        return;
    }
    int index = currentTool;
    if (index < INT_MAX && !gpHandle::IsSameTrsf(GetToolFromVector(index), gp_Trsf(), EmptySlot)) {
        ++index;
    }
    SetToolInVector(tool->GetToolTrsf(), index);
    currentTool = index;
    UpdateToolFrame();
    if (workspace) {
        UpdateMaxWork();
    }
    tool->ClearSystem();
    tool->AddSystem(GetHashIndex());
}

std::pair<std::vector<opencascade::handle<ShapeEntity>>, gp_Trsf> RobotEntity::GetZeroToolAndTrsf() const {
    ToolEntity* tool = GetToolEntity();
    if (tool == nullptr) {
        return {};
    }
    auto parts = tool->GetSubCollisionParts();
    std::erase_if(parts, [](const auto& part) { return part.IsNull(); });
    return {std::move(parts), GetCurrentToolWithOffset().Inverted()};
}

void RobotEntity::ResetToolPosition() {
    ToolEntity* tool = GetToolEntity();
    if (tool == nullptr) {
        return;
    }
    const std::vector<double> values = GetCurrentValue(0);
    Reset();
    const gp_Trsf place = GetRootMdlTrsf() * GetInstalledTrsf(tool->GetInstallIndex());
    for (const auto& part : tool->GetSubCollisionParts()) {
        part->SetTransformation(place, true);
    }
    SetCurrentValue(values, 0);
    ForwardTrsf(GetHashIndex(), true, true);
}

void RobotEntity::SetCurrentCollisionState(CheckCollisionState state) {
    collisionState = state;
    const double gap = CollisionGap(state);
    SetCheckCollisionGap(gap);
    if (ToolEntity* tool = GetToolEntity()) {
        tool->SetCheckCollisionGap(gap);
    }
}
