#include <host/tools/DataHandle.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <stdexcept>
#include <utility>

// Flanges, and mounting of entities on them.

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

using DataHandle::Refuse;

std::uint64_t RequireLinkHash(const Json::Value& place, const GenericEntity& carrier) {
    const Json::Value& hash = place["link_hash"];
    if (!hash.isUInt64() || (hash.asUInt64() != 0 && carrier.GetLinkByHash(hash.asUInt64()) == nullptr)) {
        Refuse("link_hash", hash, "0 or the hash of a link of " + carrier.GetName());
    }
    return hash.asUInt64();
}

int RequireFreePlace(const Json::Value& place, const GenericEntity& carrier) {
    const Json::Value& index = place["install_index"];
    const int count = carrier.GetFlangeSize();
    if (!index.isInt() || index.asInt() < 0 || index.asInt() > count) {
        Refuse("install_index", index,
               "0 to " + std::to_string(count) + " (flanges of " + carrier.GetName() + ")");
    }
    const Flange* flange = carrier.GetFlangeByIndex(index.asInt());
    if (flange != nullptr && flange->attached != nullptr) {
        Refuse("install_index", index,
               "a free place of " + carrier.GetName() + "; this one carries \"" +
                   flange->attached->GetName() + "\"");
    }
    const std::uint64_t named = place["link_hash"].asUInt64();
    if (flange != nullptr && named != 0 && named != flange->linkHash) {
        Refuse("link_hash", place["link_hash"],
               std::to_string(flange->linkHash) + ", the link of flange " + index.asString());
    }
    return index.asInt();
}

void RefuseToCarryItself(const GenericEntity* carrier, const GenericEntity* other) {
    for (const GenericEntity* below = carrier; below != nullptr; below = below->GetMountingEntity()) {
        if (below == other) {
            throw std::invalid_argument("entity: \"" + other->GetName() +
                                        "\", expected one that does not carry \"" + carrier->GetName() +
                                        "\"");
        }
    }
}

} // namespace

void GenericEntityConfig::AssembleOtherModel(GenericEntityConfig* other, const Json::Value& place) {
    if (other == nullptr) {
        throw std::invalid_argument("entity: null, expected one to mount on " + GetName());
    }
    RefuseToCarryItself(this, other);
    const std::uint64_t hash = RequireLinkHash(place, *this);
    const int index = RequireFreePlace(place, *this);
    if (index == GetFlangeSize()) {
        LinkRod* const link = GetLinkByHash(hash);
        // The end-centre frame is relative to the end link; elsewhere the flange is at the frame of the link
        // or entity.
        AddFlange(std::make_shared<Flange>(link, link == GetEndLink(0) ? endCenterTrsf : gp_Trsf()));
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
