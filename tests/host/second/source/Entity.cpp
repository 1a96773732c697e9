#include <host/workpiece/Entity.h>

#include <host/tools/CADParamConfig.h>
#include <utility>

namespace {

/// Keys of fixed models start here and leave gaps: they are names, not places in a list.
constexpr std::uint64_t FirstKey = 4000;
constexpr std::uint64_t KeyStep = 7;

} // namespace

Entity::~Entity() {
    life.reset();
    for (auto& [address, holder] : std::exchange(holders, {})) {
        if (!holder.life.expired()) {
            holder.forget();
        }
    }
}

void Entity::TellAtEnd(const Entity& holder, std::function<void()> forget) {
    holders[&holder] = {holder.GetLife(), std::move(forget)};
}

void Entity::Delete() {
    if (!rootMdl.IsNull()) {
        rootMdl->RemoveFromView();
    }
    for (const auto& entry : fixMdls) {
        entry.second->RemoveFromView();
    }
}

void Entity::Hide(size_t /*system*/) {
    if (!rootMdl.IsNull()) {
        rootMdl->Hide();
    }
    for (const auto& entry : fixMdls) {
        entry.second->Hide();
    }
}

Json::Value Entity::ToJson(const std::string& /*path*/) {
    Json::Value json;
    json["ID"] = rootMdl.IsNull() ? "" : rootMdl->GetId().ToString();
    json["HashID"] = Json::UInt64(hashIndex);
    json["name"] = name;
    return json;
}

void Entity::SetRootMdl(const opencascade::handle<ViewShape>& model) {
    if (model == rootMdl) {
        return;
    }
    const auto former = std::exchange(rootMdl, model);
    if (!rootMdl.IsNull()) {
        rootMdl->SetLocalTransformation(rootTrsf);
    }
    for (const auto& entry : fixMdls) {
        if (!former.IsNull()) {
            former->RemoveChild(entry.second);
        }
        if (!rootMdl.IsNull()) {
            rootMdl->AddChild(entry.second);
        }
    }
}

void Entity::UpdateCollisionMdlState() {
    SetCheckCollisionGap(CADParamConfig::GetInstance()->defaultCollisionGap);
}

std::uint64_t Entity::AddFixMdl(const opencascade::handle<ViewShape>& model) {
    const std::uint64_t key = fixMdls.empty() ? FirstKey : fixMdls.rbegin()->first + KeyStep;
    fixMdls[key] = model;
    model->SetHashKey(key);
    if (!rootMdl.IsNull()) {
        rootMdl->AddChild(model);
    }
    return key;
}

opencascade::handle<ShapeEntity> Entity::GetPart(size_t key) const {
    const auto found = fixMdls.find(key);
    return found == fixMdls.end() ? nullptr : opencascade::handle<ShapeEntity>::DownCast(found->second);
}
