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
    /// The link itself, owned by the entity; null on the base. Set it with SetLink.
    LinkRod* link = nullptr;
    /// Entity mounted here, not owned; null while the place is free.
    GenericEntity* attached = nullptr;

    Flange() = default;
    /// @param onLink link, or null for the base. @param mount flange frame relative to it, mm.
    Flange(LinkRod* onLink, const gp_Trsf& mount);

    /// Flange frame relative to the link, or to the entity where there is no link; mm.
    const gp_Trsf& GetTrsf() const { return mountTrsf; }
    /// Replaces the flange frame; what is mounted moves with the next GenericEntity::ForwardTrsf.
    void ChangeTrsf(const gp_Trsf& trsf) { mountTrsf = trsf; }
    /// Moves the flange to a link (null for the base) and keeps its frame relative to it.
    void SetLink(LinkRod* onLink);

private:
    gp_Trsf mountTrsf;
};
