#include <mechanism/PedestalEntity.h>

#include "Checked.h"

#include <stdexcept>

using namespace mechanism_detail;

namespace {

constexpr double CollisionGap = 40.0;

} // namespace

PedestalEntity::PedestalEntity() { mechanismType = MechanismPedestal; }

PedestalEntity::PedestalEntity(GenericEntity* parent) : GenericEntityConfig(parent) {
    mechanismType = MechanismPedestal;
    PedestalEntity::Initial();
}

PedestalEntity::~PedestalEntity() = default;

void PedestalEntity::UpdateCollisionMdlState() { SetCheckCollisionGap(CollisionGap); }

void PedestalEntity::Initial() {
    currentValueData.clear();
    currentValues.clear();
    if (links.empty()) {
        return;
    }
    rootLink = GetRootLink(0);
    OrderLinks();
    for (const auto& flange : flanges) {
        if (flange->linkHash == 0 || flange->link == nullptr) {
            continue;
        }
        // A flange on a link of another entity is an error even while no robot is mounted there.
        const ArrData run = RunTo(flange->link);
        if (flange->attached != nullptr) {
            const std::uint64_t system = flange->attached->GetHashIndex();
            currentValues[system].resize(run.count);
            currentValueData[system] = run;
        }
    }
    UpdateState();
}

void PedestalEntity::OrderLinks() {
    const auto given = links;
    const auto order = linkOrder;
    links.clear();
    linkOrder.clear();
    try {
        for (const auto& link : given) {
            if (links.empty()) {
                AddNewLink(link);
            } else if (!linkOrder.contains(link->linkHash)) {
                OrderLink(link, given, order);
            }
        }
    } catch (...) {
        // Links and flanges point at one another: a partial list would leave dangling pointers.
        links = given;
        linkOrder = order;
        UpdateModelPara();
        GenericEntityConfig::UpdateState();
        throw;
    }
}

void PedestalEntity::OrderLink(std::shared_ptr<LinkRod> link,
                               const std::vector<std::shared_ptr<LinkRod>>& given,
                               const std::map<size_t, unsigned short>& order) {
    if (link == nullptr) {
        return;
    }
    AddNewLink(link);
    for (int i = 0; i < link->SubLinkSize(); ++i) {
        OrderLink(At(given, At(order, link->GetSubLink(i)->linkHash)), given, order);
    }
}

ArrData PedestalEntity::RunTo(const LinkRod* link) const {
    const LinkRod* top = link;
    ArrData run{0, 1};
    for (; top->parent != nullptr; top = top->parent) {
        if (++run.count > links.size()) {
            throw std::invalid_argument(GetName() + ": the parents of link " +
                                        std::to_string(link->linkHash) + " never end, expected a tree");
        }
    }
    run.start = At(linkOrder, top->linkHash);
    return run;
}

void PedestalEntity::UpdateState() {
    auto& all = GenericEntity::currentValues;
    for (std::size_t i = 0; i < links.size(); ++i) {
        if (links[i] != nullptr) {
            all[i] = links[i]->value;
        }
    }
    for (const auto& [system, run] : currentValueData) {
        // Hash 0 stands for the whole pedestal. Values of a robot with hash 0 are copied to the front of the
        // pedestal's own, from which later systems read them.
        auto& values = const_cast<std::vector<double>&>(GetCurrentValue(system));
        for (std::size_t i = 0; i < run.count; ++i) {
            values[i] = all[run.start + i];
        }
    }
}
