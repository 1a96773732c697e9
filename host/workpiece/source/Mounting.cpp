#include <host/workpiece/GenericEntityConfig.h>
#include <stdexcept>
#include <utility>

// Flanges, and which entity stands on which.

void GenericEntity::AddFlange(const std::shared_ptr<Flange>& flange) { flanges.push_back(flange); }

Flange* GenericEntity::GetFlangeByIndex(int index) const {
    return index >= 0 && index < GetFlangeSize() ? flanges[static_cast<std::size_t>(index)].get() : nullptr;
}

gp_Trsf GenericEntity::GetFlangeWorldTrsf(const Flange& flange) const {
    return (flange.link != nullptr ? flange.link->worldTrsf : rootTrsf) * flange.GetTrsf();
}

gp_Trsf GenericEntity::GetParentAssembleTrsf() const {
    const Flange* place =
        mountingEntity != nullptr ? mountingEntity->GetFlangeByIndex(installIndex) : nullptr;
    return place != nullptr ? mountingEntity->GetFlangeWorldTrsf(*place) * assembleTrsf : rootTrsf;
}

void GenericEntity::MoveMounted() {
    for (const auto& flange : flanges) {
        if (flange->attached != nullptr) {
            flange->attached->SetRootMdlTrsf(GetFlangeWorldTrsf(*flange) * flange->attached->assembleTrsf);
        }
    }
}

void GenericEntity::Dismount() {
    if (mountingEntity == nullptr) {
        return;
    }
    if (Flange* place = mountingEntity->GetFlangeByIndex(installIndex);
        place != nullptr && place->attached == this) {
        place->attached = nullptr;
    }
    mountingEntity = nullptr;
    installIndex = -1;
}

void GenericEntity::TakeOverMounting(GenericEntity& other) {
    mountingEntity = std::exchange(other.mountingEntity, nullptr);
    installIndex = std::exchange(other.installIndex, -1);
    if (mountingEntity != nullptr) {
        mountingEntity->GetFlangeByIndex(installIndex)->attached = this;
    }
    for (const auto& flange : flanges) {
        if (flange->attached != nullptr) {
            flange->attached->mountingEntity = this;
        }
    }
}

namespace {

std::uint64_t RequireLinkHash(const Json::Value& place, const GenericEntity& carrier) {
    const Json::Value& hash = place["link_hash"];
    if (!hash.isUInt64() || (hash.asUInt64() != 0 && carrier.GetLinkByHash(hash.asUInt64()) == nullptr)) {
        throw std::invalid_argument("link_hash: " + hash.toStyledString() +
                                    " expected 0 or the hash of a link of " + carrier.GetName());
    }
    return hash.asUInt64();
}

int RequireFreePlace(const Json::Value& place, const GenericEntity& carrier) {
    const Json::Value& index = place["install_index"];
    const int count = carrier.GetFlangeSize();
    if (!index.isInt() || index.asInt() < 0 || index.asInt() > count) {
        throw std::invalid_argument("install_index: " + index.toStyledString() + " expected 0 to " +
                                    std::to_string(count) + " (flanges of " + carrier.GetName() + ")");
    }
    const Flange* flange = carrier.GetFlangeByIndex(index.asInt());
    if (flange != nullptr && flange->attached != nullptr) {
        throw std::invalid_argument("install_index: place " + std::to_string(index.asInt()) + " of " +
                                    carrier.GetName() + " already carries \"" + flange->attached->GetName() +
                                    "\"");
    }
    return index.asInt();
}

void RefuseToCarryItself(const GenericEntity* carrier, const GenericEntity* other) {
    for (const GenericEntity* below = carrier; below != nullptr; below = below->GetMountingEntity()) {
        if (below == other) {
            throw std::invalid_argument("\"" + other->GetName() + "\" cannot be mounted on what it carries");
        }
    }
}

} // namespace

void GenericEntityConfig::AssembleOtherModel(GenericEntityConfig* other, const Json::Value& place) {
    if (other == nullptr) {
        throw std::invalid_argument(GetName() + ": nothing to mount (null entity)");
    }
    RefuseToCarryItself(this, other);
    const std::uint64_t hash = RequireLinkHash(place, *this);
    const int index = RequireFreePlace(place, *this);
    if (index == GetFlangeSize()) {
        AddFlange(std::make_shared<Flange>(GetLinkByHash(hash), endCenterTrsf));
    }
    GenericEntity& mounted = *other;
    other->Dismount();
    GetFlangeByIndex(index)->attached = other;
    other->mountingEntity = this;
    other->installIndex = index;
    mounted.SetRootMdlTrsf(other->GetParentAssembleTrsf());
    UpdateAssembleData();
}

void GenericEntityConfig::DisassembleModel(GenericEntityConfig* other) {
    if (other != nullptr && other->mountingEntity == this) {
        other->Dismount();
        other->assembleTrsf = gp_Trsf(); // it was for this place and means nothing on the next
    }
}
