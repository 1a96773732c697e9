#include <host/tools/Angles.h>
#include <host/workpiece/GenericEntityConfig.h>

#include <BRepMesh_IncrementalMesh.hxx>
#include <TopExp_Explorer.hxx>
#include <host/tools/ArmFacts.h>
#include <host/tools/DataHandle.h>
#include <host/tools/gpHandle.h>
#include <memory>
#include <stdexcept>
#include <utility>

namespace {

using Angles::DegreesPerRadian;

// Deviation of collision triangles from the surface: length (mm) and angle (rad).
constexpr double MeshDeflection = 0.5;
constexpr double MeshAngle = 0.35;

bool HasGeometry(const opencascade::handle<ViewShape>& model) {
    return !model.IsNull() && !model->Shape().IsNull() && TopExp_Explorer(model->Shape(), TopAbs_FACE).More();
}

Json::Value FlangeToJson(const Flange& flange) {
    Json::Value json(Json::objectValue);
    json["link_hash"] = Json::UInt64(flange.linkHash);
    json["trsf"] = DataHandle::TrsfToJsonArr(flange.GetTrsf());
    return json;
}

} // namespace

void GenericEntityConfig::SetArmStructureCode(int code) {
    armStructureCode = code;
    chainBase = ArmFacts::ChainBase(code);
    UpdateRootTrsf(rootTrsf, true);
}

void GenericEntityConfig::SetEntityShape(const opencascade::handle<ViewShape>& shape) { SetRootMdl(shape); }

// --- frames ------------------------------------------------------------------------------------------------

gp_Trsf GenericEntityConfig::GetCurrentEndTrsf() const {
    const LinkRod* end = GetEndLink(0);
    return end != nullptr ? end->worldTrsf : rootTrsf;
}

gp_Trsf GenericEntityConfig::GetEndCenTrsf(int chain) const {
    const LinkRod* end = GetEndLink(chain);
    for (const auto& flange : flanges) {
        if (flange->link == end) {
            return flange->GetTrsf();
        }
    }
    return endCenterTrsf;
}

gp_Trsf GenericEntityConfig::GetInstalledTrsf(int index) const {
    const Flange* flange = GetFlangeByIndex(index);
    if (flange == nullptr) {
        throw std::out_of_range(GetName() + ": install position " + std::to_string(index) +
                                ", expected 0 to " + std::to_string(GetFlangeSize() - 1));
    }
    return rootTrsf.Inverted() * GetFlangeWorldTrsf(*flange);
}

gp_Trsf GenericEntityConfig::GetCurrentTrsfTool0() const { return GetCurrentEndTrsf() * GetEndCenTrsf(0); }

// --- derived data ------------------------------------------------------------------------------------------

void GenericEntityConfig::Initial() {
    endCenterTrsf = GetEndCenTrsf(0);
    UpdateModelPara();
    UpdateState();
}

void GenericEntityConfig::UpdateModelPara() { currentValues.resize(links.size()); }

void GenericEntityConfig::UpdateState() {
    for (std::size_t i = 0; i < links.size(); ++i) {
        currentValues[i] = links[i]->value;
    }
}

void GenericEntityConfig::UpdateAssembleData() { UpdateRootTrsf(rootTrsf, true); }

void GenericEntityConfig::UpdateLinkModelNames() {
    for (const auto& [key, model] : fixMdls) {
        model->SetName(GetName() + " - base");
    }
    for (std::size_t i = 0; i < links.size(); ++i) {
        for (const auto& model : links[i]->models) {
            if (!model.IsNull()) {
                model->SetName(GetName() + " - axis " + std::to_string(i + 1));
            }
        }
    }
    Initial();
}

// --- collision ---------------------------------------------------------------------------------------------

std::vector<opencascade::handle<ShapeEntity>> GenericEntityConfig::GetSubCollisionParts() {
    auto parts = GetCollisionFixMdls();
    for (const auto& link : links) {
        for (const auto& model : link->models) {
            auto part = opencascade::handle<ShapeEntity>::DownCast(model);
            if (!part.IsNull() && part->takesPartInCollision) {
                parts.push_back(part);
            }
        }
    }
    std::erase_if(parts, [](const auto& part) { return !HasGeometry(part); });
    return parts;
}

void GenericEntityConfig::CreateCollisionMdl() {
    for (const auto& part : GetSubCollisionParts()) {
        BRepMesh_IncrementalMesh(part->Shape(), MeshDeflection, Standard_False, MeshAngle);
    }
    UpdateCollisionMdlState();
}

// --- data --------------------------------------------------------------------------------------------------

Json::Value GenericEntityConfig::DataToJson(const std::string& path) {
    Json::Value json = Entity::ToJson(path);
    json["type"] = static_cast<int>(mechanismType);
    json["parameters"] = parameters;
    json["arm_structure"] = armStructureCode;
    json["coupled"] = IsCouplingRobot();
    for (const auto& link : links) {
        Json::Value record = LinkToJson(link.get());
        const double unit = link->jointType == JointLinear ? 1.0 : DegreesPerRadian;
        record["axis_min"] = link->limit.first * unit;
        record["axis_max"] = link->limit.second * unit;
        const gp_Pnt origin = link->axis.Location();
        const gp_Dir& direction = link->axis.Direction();
        for (const double number :
             {origin.X(), origin.Y(), origin.Z(), direction.X(), direction.Y(), direction.Z()}) {
            record["joint_axis"].append(number);
        }
        for (const auto& model : link->models) {
            if (!model.IsNull()) {
                record["axis_models"].append(model->GetId().ToString());
            }
        }
        json["links"].append(record);
    }
    for (const auto& flange : flanges) {
        json["flanges"].append(FlangeToJson(*flange));
    }
    return json;
}

void GenericEntityConfig::LoadFromJson(const Json::Value& json) {
    const Uuid id = Uuid::FromString(json["ID"].asString());
    const std::uint64_t hash = json["HashID"].asUInt64();
    const int structure = json["arm_structure"].asInt();
    const bool coupled = json["coupled"].asBool();
    for (const Json::Value& record : json["links"]) {
        UpdateLinkRodPara(record, true);
    }
    if (!json["flanges"].empty()) {
        ReplaceFlanges(json["flanges"]);
    }
    if (json.isMember("arm_structure")) {
        SetArmStructureCode(structure);
    }
    if (json.isMember("coupled")) {
        SetCouplingRobot(coupled);
    }
    if (json.isMember("parameters")) {
        parameters = json["parameters"];
    }
    if (!rootMdl.IsNull()) {
        rootMdl->SetId(id);
    }
    SetHashIndex(hash);
    SetName(json["name"].asString());
    Initial();
}

void GenericEntityConfig::ReplaceFlanges(const Json::Value& json) {
    std::vector<std::shared_ptr<Flange>> read;
    for (const Json::Value& record : json) {
        LinkRod* link = GetLinkByHash(record["link_hash"].asUInt64());
        read.push_back(std::make_shared<Flange>(link, DataHandle::JsonArrToTrsf(record["trsf"])));
    }
    // A mounted entity moves to the new flange of the same index; without one it is taken off.
    for (std::size_t i = 0; i < flanges.size(); ++i) {
        GenericEntity* const mounted = flanges[i]->attached;
        if (i < read.size()) {
            read[i]->attached = mounted;
        } else if (mounted != nullptr) {
            DismountFrom(*mounted);
        }
    }
    flanges = std::move(read);
}

void GenericEntityConfig::ExportParaToJson(Json::Value& out) {
    out["type"] = static_cast<int>(mechanismType);
    out["parameters"] = parameters;
}
