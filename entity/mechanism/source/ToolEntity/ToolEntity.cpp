#include <mechanism/ToolEntity.h>

#include "Document.h"
#include "ModelNames.h"
#include "TorchParts.h"

#include <host/tools/gpHandle.h>
#include <utility>

using namespace mechanism_detail;

namespace {

constexpr double ToolCollisionGap = 5.0;
constexpr std::size_t TorchPartCount = 3;

} // namespace

ToolEntity::ToolEntity() = default;
ToolEntity::ToolEntity(GenericEntity* parent) : GenericEntityConfig(parent) {}
ToolEntity::~ToolEntity() = default;

// --- building ----------------------------------------------------------------------------------------------

std::pair<bool, std::shared_ptr<ToolEntity>>
ToolEntity::CreateToolEntityByParameter(const Json::Value& param) {
    auto tool = std::make_shared<ToolEntity>();
    if (!IsWeldGun(param)) {
        return {false, tool};
    }
    const auto torch = BuildTorch(param);
    if (!torch) {
        return {false, tool};
    }
    const auto parts = MakeTorchParts(torch->shapes);
    const opencascade::handle<ShapeEntity> root = new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid());
    root->SetName("默认焊枪");
    root->SetPrimitiveProperty(root->GetName(), Uuid::CreateUuid());
    tool->SetEntityShape(root);
    const auto flange = std::make_shared<Flange>();
    flange->ChangeTrsf(gpHandle::LocEulerToTrsf(torch->tcp));
    tool->AddFlange(flange);
    tool->PutOnParts(parts, param);
    root->Display(1, 0);
    return {true, tool};
}

bool ToolEntity::UpdataToolParameterData(const Json::Value& param) {
    if (!IsWeldGun(param)) {
        return true;
    }
    std::vector<Uuid> identities;
    for (const auto& [key, model] : fixMdls) {
        identities.push_back(model->GetId());
    }
    if (identities.size() != TorchPartCount) {
        return false;
    }
    const auto torch = BuildTorch(param);
    if (!torch) {
        return false;
    }
    if (flanges.empty()) {
        AddFlange(std::make_shared<Flange>());
    }
    GetFlangeByIndex(0)->ChangeTrsf(gpHandle::LocEulerToTrsf(torch->tcp));
    const gp_Trsf placement = rootMdl.IsNull() ? gp_Trsf() : rootMdl->LocalTransformation();
    if (!rootMdl.IsNull()) {
        PlaceRoot(gp_Trsf());
        rootMdl->RemoveFromView();
        rootMdl->RemoveAllChild();
    }
    const auto parts = MakeTorchParts(torch->shapes);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        parts[i]->SetId(identities[i]);
    }
    PutOnParts(parts, param);
    if (!rootMdl.IsNull()) {
        rootMdl->Display(1, 0);
        PlaceRoot(placement);
    }
    return true;
}

void ToolEntity::PlaceRoot(const gp_Trsf& trsf) {
    if (const auto root = opencascade::handle<ShapeEntity>::DownCast(rootMdl)) {
        root->SetTransformation(trsf, true);
    } else {
        rootMdl->SetLocalTransformation(trsf);
        rootMdl->RedisplayShape(false, false);
    }
}

void ToolEntity::PutOnParts(const std::vector<opencascade::handle<ShapeEntity>>& parts,
                            const Json::Value& param) {
    parameters = param;
    AddSubMdlList({parts.begin(), parts.end()}, false);
    endToolMdl = parts.front();
    CreateCollisionMdl();
    mechanismType = MechanismTool;
}

// --- state -------------------------------------------------------------------------------------------------

void ToolEntity::Initial() {
    // A const reference: operator[] of a non-const object would insert a null entry.
    if (const Json::Value& given = std::as_const(parameters); !given["ToolWorkType"].isNull()) {
        workType = static_cast<ToolWorkType>(ReadInt(given, "ToolWorkType"));
    }
    const bool wasUnset = toolTrsf.Form() == gp_Identity;
    if (!flanges.empty()) {
        toolTrsf = flanges.front()->GetTrsf();
    }
    // A carrier on which the tool was mounted earlier has not received its frame yet.
    if (wasUnset && toolTrsf.Form() != gp_Identity && mountingEntity != nullptr) {
        mountingEntity->UpdateAssembleData();
    }
    if (workType == WorkTypePainting) {
        SetPaintedTool();
    }
}

void ToolEntity::SetSimulatorState(bool simulating) {
    if (!endToolMdl.IsNull()) {
        endToolMdl->simulationTolerance = simulating ? 0.0 : endToolGap;
    }
}

void ToolEntity::UpdateCollisionMdlState() { SetCheckCollisionGap(ToolCollisionGap); }

void ToolEntity::UpdateLinkModelNames() {
    NameModels(*this, "工具");
    Initial();
}

// --- persistence -------------------------------------------------------------------------------------------

void ToolEntity::ExportParaToJson(Json::Value& out) {
    out["type"] = static_cast<int>(MechanismTool);
    out["WorkType"] = static_cast<int>(workType);
    if (!endToolMdl.IsNull()) {
        out["EndHashID"] = Json::UInt64(endToolMdl->GetHashKey());
    }
}

Json::Value ToolEntity::ToJson(const std::string& path) {
    ExportEntityPkg(this, path);
    Json::Value json = Entity::ToJson("");
    ExportParaToJson(json);
    return json;
}

void ToolEntity::LoadFromJson(const Json::Value& json) {
    if (rootMdl.IsNull()) {
        return;
    }
    RequireObject(json);
    const Uuid id = ReadId(json);
    const std::uint64_t hash = ReadHash(json, "HashID");
    const int type = ReadInt(json, "WorkType");
    const std::uint64_t end = ReadHash(json, "EndHashID");
    rootMdl->SetId(id);
    SetHashIndex(hash);
    workType = static_cast<ToolWorkType>(type);
    if (!json["EndHashID"].isNull()) {
        endToolMdl = GetPart(end);
    }
}
