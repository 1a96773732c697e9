#include "Checked.h"
#include "Document.h"
#include "Failure.h"
#include "Format.h"

#include <algorithm>
#include <cmath>
#include <gp_Ax2.hxx>
#include <gp_Quaternion.hxx>
#include <host/tools/Angles.h>
#include <host/tools/CADParamConfig.h>
#include <host/tools/Rigid.h>
#include <host/tools/gpHandle.h>
#include <host/view/ViewShapeUtil.h>
#include <mechanism/RobotEntity.h>
#include <stdexcept>

using namespace mechanism_detail;

namespace {

constexpr int ToolFrameSize = 50;
using Angles::RadiansPerDegree;
/// Squared norm below which four numbers are no rotation.
constexpr double NoRotation = 1e-7;

gp_Pnt AnglesOfQuaternion(const Json::Value& json) {
    const double w = ReadNumber(json, "Q1") * RadiansPerDegree;
    const double x = ReadNumber(json, "Q2") * RadiansPerDegree;
    const double y = ReadNumber(json, "Q3") * RadiansPerDegree;
    const double z = ReadNumber(json, "Q4") * RadiansPerDegree;
    const double squaredNorm = x * x + y * y + z * z + w * w;
    if (!std::isfinite(squaredNorm)) {
        Refuse("Q1", json["Q1"], "with Q2 to Q4 the four numbers of a rotation");
    }
    gp_Trsf rotation;
    if (squaredNorm >= NoRotation) {
        rotation.SetRotation(gp_Quaternion(x, y, z, w));
    }
    return gpHandle::TrsfToEuler(rotation).euler;
}

gp_Pnt AnglesOfDegrees(const Json::Value& json) {
    return {ReadNumber(json, "RX") * RadiansPerDegree, ReadNumber(json, "RY") * RadiansPerDegree,
            ReadNumber(json, "RZ") * RadiansPerDegree};
}

/// Checks an index of the tool list. @throws std::out_of_range "invalid vector subscript" for a negative one.
std::size_t ToolPlace(int index) {
    if (index < 0) {
        RefuseSubscript();
    }
    return static_cast<std::size_t>(index);
}

bool IsChildOf(const opencascade::handle<ViewShape>& parent,
               const opencascade::handle<BaseViewShape>& child) {
    const auto& children = parent->Children();
    return std::any_of(children.begin(), children.end(),
                       [&](const auto& other) { return other.get() == child.get(); });
}

} // namespace

// --- tool list ---------------------------------------------------------------------------------------------

const gp_Trsf& RobotEntity::GetToolFromVector(int index) const {
    if (index >= ToolLimit) {
        Log(spdlog::level::err, family::RobotEntity, __LINE__, "RobotEntity::GetToolFromVector",
            format("传入错误的索引号，不可能出现当前大数{}", index));
        return At(tools, 0);
    }
    const std::size_t position = ToolPlace(index);
    if (position >= tools.size()) {
        tools.resize(position + 1);
    }
    return tools[position];
}

void RobotEntity::SetToolInVector(const gp_Trsf& tool, int index) {
    const std::size_t position = ToolPlace(index);
    if (position >= tools.size()) {
        tools.resize(position + 1);
    }
    tools[position] = tool;
}

Json::Value RobotEntity::ChangeCurrentTool(int index) {
    ToolPlace(index);
    currentTool = index;
    return GetToolData();
}

void RobotEntity::SetToolData(const Json::Value& json) {
    if (json.isNull()) {
        return;
    }
    if (!json.isObject()) {
        Refuse("tool", json, "an object");
    }
    const int index = ReadInt(json, "ToolIndex");
    if (index < 0) {
        Refuse("ToolIndex", json["ToolIndex"], "0 or more");
    }
    const gp_Pnt origin(ReadNumber(json, "X"), ReadNumber(json, "Y"), ReadNumber(json, "Z"));
    const gp_Pnt angles = ReadInt(json, "Type") == 0 ? AnglesOfDegrees(json) : AnglesOfQuaternion(json);
    SetToolInVector(gpHandle::LocEulerToTrsf(LocEuler(origin, angles)), index);
}

Json::Value RobotEntity::GetToolData() const {
    const LocEuler pose = gpHandle::TrsfToEuler(GetToolFromVector(currentTool));
    const gp_Quaternion q = gpHandle::EulerToRotateTrsf(pose.euler).GetRotation();
    Json::Value json(Json::objectValue);
    json["ToolIndex"] = currentTool;
    json["X"] = pose.location.X();
    json["Y"] = pose.location.Y();
    json["Z"] = pose.location.Z();
    json["RX"] = pose.euler.X() / RadiansPerDegree;
    json["RY"] = pose.euler.Y() / RadiansPerDegree;
    json["RZ"] = pose.euler.Z() / RadiansPerDegree;
    json["Q1"] = q.W();
    json["Q2"] = q.X();
    json["Q3"] = q.Y();
    json["Q4"] = q.Z();
    return json;
}

// --- tool centre -------------------------------------------------------------------------------------------

void RobotEntity::SetZOffset(double z) { zOffset.SetTranslationPart(gp_Vec(0, 0, z)); }

double RobotEntity::GetZOffset() const { return zOffset.TranslationPart().Z(); }

gp_Trsf RobotEntity::GetCurrentToolWithOffset() const { return GetCurrentTool() * zOffset; }

/// Called for every pose of a collision check: the product is computed on plain numbers (Rigid).
gp_Trsf RobotEntity::GetCurrentTrsfTCP() const {
    const LinkRod* end = GetEndLink(0);
    gp_Trsf tcp =
        (Rigid::From(end != nullptr ? end->worldTrsf : rootTrsf) * Rigid::From(endCenterTrsf)).ToTrsf();
    for (const gp_Trsf* after : {&GetCurrentTool(), static_cast<const gp_Trsf*>(&zOffset)}) {
        if (after->Form() != gp_Identity) {
            tcp.Multiply(*after);
        }
    }
    return tcp;
}

LocEuler RobotEntity::GetCurrentTCP() const { return gpHandle::TrsfToEuler(GetCurrentTrsfTCP()); }

void RobotEntity::UpdateToolByDH() {
    armDH = GetArmDH1989(this);
    endCenterTrsf = GetEndCenTrsf(0);
    Flange& flange = *At(flanges, 0);
    flange.ChangeTrsf(endCenterTrsf);
    flange.SetLink(GetEndLink(0));
    UpdateModelPara();
}

void RobotEntity::UpdateToolFrame() {
    const LinkRod* end = GetEndLink(0);
    if (end == nullptr) {
        return;
    }
    const opencascade::handle<ViewShape> endModel =
        end->models.empty() ? opencascade::handle<ViewShape>() : end->models.front();
    if (!toolFrameMdl.IsNull()) {
        if (!endModel.IsNull() && IsChildOf(endModel, toolFrameMdl)) {
            endModel->RemoveChild(toolFrameMdl);
        }
        toolFrameMdl->RemoveFromView();
    }
    const gp_Trsf tool = endCenterTrsf * GetToolFromVector(currentTool);
    toolFrameMdl = ViewShapeUtil::GenDirModel(gpHandle::TrsfToAx2(tool), ToolFrameSize);
    toolFrameMdl->SetSelectionMode(-1, false);
    toolFrameMdl->SetDispalyMode(0);
    toolFrameMdl->Display();
    toolFrameMdl->SetLocalTransformation(end->worldTrsf);
    if (!endModel.IsNull()) {
        toolFrameMdl->SetLocalTransformation(endModel->LocalTransformation());
        endModel->AddChildWithCurrentTransformation(toolFrameMdl);
    } else if (!rootMdl.IsNull()) {
        // It is shown and hidden with the robot; it does not move with the joints.
        rootMdl->AddChildWithCurrentTransformation(toolFrameMdl);
    }
}
