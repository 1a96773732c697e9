#pragma once

#include <cstdint>
#include <gp_Trsf.hxx>

class GenericEntity;
class LinkRod;

/// A place on a mechanism where another entity is mounted.
class Flange {
public:
    /// Hash of the link it sits on; 0 when it sits on the entity's base.
    std::uint64_t linkHash = 0;
    LinkRod* link = nullptr;
    /// Entity mounted here, not owned; null while the place is free.
    GenericEntity* attached = nullptr;

    Flange() = default;
    Flange(LinkRod* onLink, const gp_Trsf& mount);

    /// Flange frame relative to the link, or to the entity where there is no link.
    const gp_Trsf& GetTrsf() const { return mountTrsf; }
    void ChangeTrsf(const gp_Trsf& trsf) { mountTrsf = trsf; }
    void SetLink(LinkRod* onLink);

private:
    gp_Trsf mountTrsf;
};
