#include "Document.h"
#include "ModelNames.h"

#include <mechanism/PedestalEntity.h>

using namespace mechanism_detail;

void PedestalEntity::UpdateLinkModelNames() {
    NameModels(*this, "地轨");
    Initial();
}

Json::Value PedestalEntity::ToJson(const std::string& path) {
    ExportEntityPkg(this, path);
    Json::Value json = Entity::ToJson("");
    json["type"] = static_cast<int>(MechanismPedestal);
    return json;
}

void PedestalEntity::LoadFromJson(const Json::Value& json) {
    if (rootMdl.IsNull()) {
        return;
    }
    RequireObject(json);
    const Uuid id = ReadId(json);
    SetHashIndex(ReadHash(json, "HashID"));
    rootMdl->SetId(id);
}
