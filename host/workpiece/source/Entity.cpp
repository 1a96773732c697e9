#include <host/workpiece/Entity.h>

#include <host/tools/CADParamConfig.h>
#include <utility>

Entity::~Entity() {
    life.reset();
    for (const auto& [entity, holder] : holders) {
        if (!holder.life.expired()) {
            holder.forget();
        }
    }
}

void Entity::TellAtEnd(const Entity& holder, std::function<void()> forget) {
    std::erase_if(holders, [](const auto& entry) { return entry.second.life.expired(); });
    holders[&holder] = {holder.GetLife(), std::move(forget)};
}

void Entity::Delete() {
    for (const auto& [key, model] : fixMdls) {
        model->RemoveFromView();
    }
    if (!rootMdl.IsNull()) {
        rootMdl->RemoveFromView();
    }
}

void Entity::Hide(size_t /*system*/) {
    for (const auto& [key, model] : fixMdls) {
        model->Hide();
    }
    if (!rootMdl.IsNull()) {
        rootMdl->Hide();
    }
}

Json::Value Entity::ToJson(const std::string& /*path*/) {
    Json::Value json(Json::objectValue);
    json["ID"] = rootMdl.IsNull() ? std::string() : rootMdl->GetId().ToString();
    json["HashID"] = Json::UInt64(hashIndex);
    json["name"] = name;
    return json;
}

void Entity::SetRootMdl(const opencascade::handle<ViewShape>& model) {
    if (!rootMdl.IsNull() && rootMdl != model) {
        for (const auto& [key, part] : fixMdls) {
            rootMdl->RemoveChild(part);
        }
    }
    const bool hangParts = !model.IsNull() && rootMdl != model;
    rootMdl = model;
    if (rootMdl.IsNull()) {
        return;
    }
    rootMdl->SetLocalTransformation(rootTrsf);
    if (hangParts) {
        for (const auto& [key, part] : fixMdls) {
            rootMdl->AddChild(part);
        }
    }
}

void Entity::UpdateCollisionMdlState() {
    SetCheckCollisionGap(CADParamConfig::GetInstance()->defaultCollisionGap);
}

std::uint64_t Entity::AddFixMdl(const opencascade::handle<ViewShape>& model) {
    const std::uint64_t key = fixMdls.empty() ? 1 : fixMdls.rbegin()->first + 1;
    model->SetHashKey(key);
    fixMdls.emplace(key, model);
    if (!rootMdl.IsNull()) {
        rootMdl->AddChild(model);
    }
    return key;
}

opencascade::handle<ShapeEntity> Entity::GetPart(size_t key) const {
    const auto found = fixMdls.find(key);
    return found != fixMdls.end() ? opencascade::handle<ShapeEntity>::DownCast(found->second) : nullptr;
}
