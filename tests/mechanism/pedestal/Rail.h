#pragma once

#include <mechanism/PedestalEntity.h>
#include <support/SampleMechanisms.h>

/// A pedestal that a test builds link by link, in any order, and on which it mounts robots.
class Rail : public PedestalEntity {
public:
    LinkRod* Add(std::uint64_t hash, LinkRod* parent = nullptr, const gp_Dir& direction = gp::DX()) {
        const auto link = std::make_shared<LinkRod>();
        link->linkHash = hash;
        link->parent = parent;
        link->jointType = JointLinear;
        link->axis = gp_Ax1({1, 2, 3}, direction);
        link->limit = {0, 100};
        if (parent != nullptr) {
            parent->AddSubLink(link.get());
        }
        AddNewLink(link);
        return link.get();
    }
    void Stand(LinkRod* link, std::uint64_t system) {
        robots.push_back(std::make_unique<GenericEntityConfig>());
        robots.back()->SetHashIndex(system);
        AssembleOtherModel(robots.back().get(), sample::Place(link->linkHash, GetFlangeSize()));
    }

private:
    std::vector<std::unique_ptr<GenericEntityConfig>> robots;
};
