#include <host/workpiece/GenericEntity.h>

#include <algorithm>
#include <host/tools/TextHandle.h>
#include <stdexcept>

GenericEntity::~GenericEntity() {
    Dismount();
    for (const auto& flange : flanges) {
        if (flange->attached != nullptr) {
            flange->attached->mountingEntity = nullptr;
        }
    }
}

void GenericEntity::Delete() {
    Entity::Delete();
    ForEachLinkModel([](const ViewShape& model) { model.RemoveFromView(); });
}

void GenericEntity::Hide(size_t system) {
    if (system != 0 && !systems.empty() && !systems.contains(system)) {
        return;
    }
    Entity::Hide(system);
    ForEachLinkModel([](const ViewShape& model) { model.Hide(); });
}

// --- placement and motion ----------------------------------------------------------------------------------

void GenericEntity::SetRootMdlTrsf(const gp_Trsf& trsf) { UpdateRootTrsf(trsf, true); }

void GenericEntity::UpdateRootTrsf(const gp_Trsf& trsf, bool follow) {
    rootTrsf = trsf;
    baseWorld = Rigid::From(trsf) * chainBase;
    if (!rootMdl.IsNull()) {
        rootMdl->SetLocalTransformation(trsf);
    }
    if (follow) {
        PlaceLinks(nullptr);
        UpdateModels();
        MoveMounted();
    }
}

void GenericEntity::TransformedBy(const gp_Trsf& trsf) { SetRootMdlTrsf(trsf * rootTrsf); }

// Parents precede their children in the list, so one pass places all links. With null values each link keeps
// its own.
void GenericEntity::PlaceLinks(const double* values) {
    for (std::size_t i = 0; i < links.size(); ++i) {
        LinkRod& link = *links[i];
        if (values != nullptr) {
            link.value = values[i];
        }
        link.PlaceOn(link.parent != nullptr ? link.parent->GetWorld() : baseWorld);
    }
}

void GenericEntity::UpdateModels() const {
    for (const auto& link : links) {
        for (const auto& model : link->models) {
            if (!model.IsNull()) {
                model->SetLocalTransformation(link->worldTrsf);
            }
        }
    }
}

bool GenericEntity::ForwardTrsf(std::uint64_t /*system*/, bool updateModels, bool moveMounted) {
    return ForwardTrsfWithValue(currentValues, updateModels, moveMounted);
}

bool GenericEntity::ForwardTrsfWithValue(const std::vector<double>& values, bool updateModels,
                                         bool moveMounted) {
    if (values.size() < links.size()) {
        return false;
    }
    PlaceLinks(values.data());
    if (updateModels) {
        UpdateModels();
    }
    if (moveMounted) {
        MoveMounted();
    }
    return true;
}

bool GenericEntity::Reset() {
    std::fill(currentValues.begin(), currentValues.end(), 0.0);
    return ForwardTrsf(hashIndex, true, true);
}

// --- values ------------------------------------------------------------------------------------------------

bool GenericEntity::IsInLimit(const std::vector<double>& values, size_t /*system*/, double margin) const {
    const std::size_t count = std::min(values.size(), links.size());
    for (std::size_t i = 0; i < count; ++i) {
        if (!links[i]->IsInLimit(values[i], margin)) {
            return false;
        }
    }
    return true;
}

std::vector<std::pair<double, double>> GenericEntity::GetLimit(size_t /*system*/, double margin) {
    std::vector<std::pair<double, double>> limits;
    limits.reserve(links.size());
    for (std::size_t i = 0; i < links.size(); ++i) {
        const auto& [low, high] = links[i]->GetLimit();
        if (!(low + margin <= high - margin)) {
            throw std::invalid_argument("joint " + std::to_string(i + 1) + ": margin " +
                                        TextHandle::Shortest(margin) + " leaves no range between " +
                                        TextHandle::Shortest(low) + " and " + TextHandle::Shortest(high));
        }
        limits.emplace_back(low + margin, high - margin);
    }
    return limits;
}

int GenericEntity::GetDOF(size_t /*system*/) const { return GetLinkSize(); }

const std::vector<double>& GenericEntity::GetCurrentValue(size_t /*system*/) const { return currentValues; }

void GenericEntity::SetCurrentValue(const std::vector<double>& values, size_t /*system*/) {
    if (values.size() < currentValues.size()) {
        throw std::invalid_argument(name + ": " + std::to_string(values.size()) + " joint values, expected " +
                                    std::to_string(currentValues.size()));
    }
    std::copy_n(values.begin(), currentValues.size(), currentValues.begin());
}

// --- models ------------------------------------------------------------------------------------------------

std::vector<opencascade::handle<ShapeEntity>> GenericEntity::GetFixMdls() {
    std::vector<opencascade::handle<ShapeEntity>> parts;
    for (const auto& [key, model] : fixMdls) {
        if (auto part = opencascade::handle<ShapeEntity>::DownCast(model)) {
            parts.push_back(part);
        }
    }
    return parts;
}

std::vector<opencascade::handle<ShapeEntity>> GenericEntity::GetCollisionFixMdls() {
    auto parts = GetFixMdls();
    std::erase_if(parts, [](const auto& part) { return !part->takesPartInCollision; });
    return parts;
}

// --- links -------------------------------------------------------------------------------------------------

LinkRod* GenericEntity::GetLink(size_t position) const {
    return position < links.size() ? links[position].get() : nullptr;
}

LinkRod* GenericEntity::GetLinkByHash(std::uint64_t hash) const {
    const auto found = linkOrder.find(hash);
    return found != linkOrder.end() ? links[found->second].get() : nullptr;
}

LinkRod* GenericEntity::GetRootLink(int chain) const {
    for (const auto& link : links) {
        if (link->parent == nullptr && chain-- == 0) {
            return link.get();
        }
    }
    return nullptr;
}

LinkRod* GenericEntity::GetEndLink(int chain) const {
    LinkRod* link = GetRootLink(chain);
    while (link != nullptr && link->SubLinkSize() > 0) {
        link = link->GetSubLink(0);
    }
    return link;
}

int GenericEntity::GetRootLinkNum() const {
    return static_cast<int>(
        std::count_if(links.begin(), links.end(), [](const auto& link) { return link->parent == nullptr; }));
}

unsigned short GenericEntity::GetLinkIndexOrder(std::uint64_t hash) const {
    const auto found = linkOrder.find(hash);
    if (found == linkOrder.end()) {
        throw std::out_of_range(name + ": no link has the hash " + std::to_string(hash));
    }
    return found->second;
}

void GenericEntity::AddNewLink(const std::shared_ptr<LinkRod>& link) {
    if (link->linkHash == 0 || linkOrder.contains(link->linkHash)) {
        throw std::invalid_argument("link_hash: " + std::to_string(link->linkHash) +
                                    ", expected one that is not 0 and not used by another link");
    }
    if (link->parent != nullptr && !linkOrder.contains(link->parent->linkHash)) {
        throw std::invalid_argument("parent_link_hash: " + std::to_string(link->parent->linkHash) +
                                    ", expected a link that is already in the list");
    }
    links.push_back(link);
    linkOrder.emplace(link->linkHash, static_cast<unsigned short>(links.size() - 1));
    currentValues.resize(links.size());
}
