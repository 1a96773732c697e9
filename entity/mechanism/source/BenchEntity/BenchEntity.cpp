#include <mechanism/BenchEntity.h>

#include "Document.h"
#include "Failure.h"
#include "ModelNames.h"

#include <host/tools/gpHandle.h>
#include <host/workpiece/Workpiece.h>

using namespace mechanism_detail;

BenchEntity::BenchEntity() { mechanismType = MechanismBench; }

BenchEntity::BenchEntity(GenericEntity* parent) : GenericEntityConfig(parent) {
    mechanismType = MechanismBench;
    try {
        BenchEntity::Initial();
    } catch (...) {
        BenchEntity::Delete(); // the destructor will not run: no workpiece may refer to this object
        throw;
    }
}

BenchEntity::~BenchEntity() = default;

void BenchEntity::Initial() {
    workpieces.clear();
    if (!flanges.empty()) {
        placementTrsf = flanges.front()->GetTrsf();
    }
    if (GetDOF(0) > 0) {
        endCenterTrsf = GetEndCenTrsf(0);
    }
    for (const auto& flange : flanges) {
        if (flange->attached != nullptr) {
            AddWorkpiece(dynamic_cast<Workpiece*>(flange->attached));
        }
    }
    UpdateDH();
}

void BenchEntity::UpdateDH() {
    if (GetRootLinkNum() > 1) {
        Fail(family::BenchEntity, __LINE__, "BenchEntity::UpdateDH", "变位机结构错误：不支持多条运动链");
    }
    benchDH.clear();
    for (const auto& link : links) {
        const auto [location, euler] = gpHandle::TrsfToEuler(link->GetCenterTrsf());
        benchDH.push_back({location.X(), location.Y(), location.Z(), 0});
        benchDH.push_back({euler.X(), euler.Y(), euler.Z(), 0});
    }
}

// --- frames ------------------------------------------------------------------------------------------------

gp_Trsf BenchEntity::KinematicForward(const std::vector<double>& values, bool flag) {
    ForwardTrsfWithValue(values, flag, true);
    return GetEndTrsfBy();
}

gp_Trsf BenchEntity::GetEndTrsfBy() {
    return GetCurrentTrsfTool0() * (GetRootMdlTrsf() * endCenterTrsf).Inverted();
}

std::uint64_t BenchEntity::GetPlacementLinkHash() const {
    return GetDOF(0) < 1 ? 0 : GetEndLink(0)->linkHash;
}

// --- persistence -------------------------------------------------------------------------------------------

void BenchEntity::UpdateLinkModelNames() {
    NameModels(*this, "工作台");
    Initial();
}

Json::Value BenchEntity::ToJson(const std::string& path) {
    ExportEntityPkg(this, path);
    Json::Value json = Entity::ToJson("");
    json["type"] = static_cast<int>(MechanismBench);
    return json;
}

void BenchEntity::LoadFromJson(const Json::Value& json) {
    if (rootMdl.IsNull()) {
        return;
    }
    RequireObject(json);
    const Uuid id = ReadId(json);
    SetHashIndex(ReadHash(json, "HashID"));
    rootMdl->SetId(id);
}

Json::Value BenchEntity::DataToJson(const std::string& path) {
    Json::Value json = GenericEntityConfig::DataToJson(path);
    for (const std::uint64_t system : systems) {
        json["WorkbenchSystem"].append(Json::UInt64(system));
    }
    return json;
}
