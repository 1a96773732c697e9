#pragma once

#include <host/workpiece/Entity.h>
#include <host/workpiece/Flange.h>
#include <host/workpiece/LinkRod.h>
#include <memory>
#include <set>

/// A kinematic mechanism: links, flanges, current joint values, membership in robot systems, and the place
/// where it is mounted.
class GenericEntity : public Entity {
public:
    ~GenericEntity() override;

    void Delete() override;
    void Hide(size_t system) override;
    void SetRootMdlTrsf(const gp_Trsf& trsf) override;
    void UpdateRootTrsf(const gp_Trsf& trsf, bool follow) override;
    int EntityDof() const override { return GetLinkSize(); }
    /// Whether every value lies within its link's limits; values beyond the last link are not looked at.
    bool IsInLimit(const std::vector<double>& values, size_t system, double margin) const override;
    /// (minimum + margin, maximum - margin) of every link.
    /// @throws std::invalid_argument naming the joint when the margin leaves no range.
    std::vector<std::pair<double, double>> GetLimit(size_t system, double margin) override;
    void TransformedBy(const gp_Trsf& trsf) override;
    int GetDOF(size_t system) const override;
    const std::vector<double>& GetCurrentValue(size_t system) const override;
    /// Takes over as many values as the entity has joints; moves nothing (ForwardTrsf does).
    /// @throws std::invalid_argument when there are fewer.
    void SetCurrentValue(const std::vector<double>& values, size_t system) override;
    std::vector<opencascade::handle<ShapeEntity>> GetFixMdls() override;
    std::vector<opencascade::handle<ShapeEntity>> GetCollisionFixMdls() override;

    // --- links -----------------------------------------------------------------------------------------
    int GetLinkSize() const { return static_cast<int>(links.size()); }
    /// Link by position in the link list, null past the end.
    LinkRod* GetLink(size_t position) const;
    LinkRod* GetLinkByHash(std::uint64_t hash) const;
    /// Root link of a chain, null where there is no such chain.
    LinkRod* GetRootLink(int chain) const;
    /// Last link of a chain, following child 0; null where there is no such chain.
    LinkRod* GetEndLink(int chain) const;
    int GetRootLinkNum() const;
    /// Position of the link with that hash.
    /// @throws std::out_of_range naming the hash when there is none.
    unsigned short GetLinkIndexOrder(std::uint64_t hash) const;

    // --- flanges and mounting --------------------------------------------------------------------------
    void AddFlange(const std::shared_ptr<Flange>& flange);
    /// Null where there is no such flange.
    Flange* GetFlangeByIndex(int index) const;
    int GetFlangeSize() const { return static_cast<int>(flanges.size()); }
    /// World frame of a flange in the current pose.
    gp_Trsf GetFlangeWorldTrsf(const Flange& flange) const;
    /// World frame of where the entity is installed: the carrier's flange with the assembly transform, or the
    /// entity's own placement while it stands on the ground.
    gp_Trsf GetParentAssembleTrsf() const;
    /// The entity that carries this one, or null.
    GenericEntity* GetMountingEntity() const { return mountingEntity; }
    int GetInstallIndex() const { return installIndex; }
    /// Placement relative to the carrier's flange.
    const gp_Trsf& GetAssembleTrsf() const { return assembleTrsf; }
    void SetAssembleTrsf(const gp_Trsf& trsf) { assembleTrsf = trsf; }

    // --- motion ----------------------------------------------------------------------------------------
    /// Recomputes every link's world transform from the current values.
    /// @param system which system's values; an entity with one value vector uses that for all.
    /// @param updateModels move the view models along. @param moveMounted move mounted entities along.
    /// @return false, with nothing moved, when there are fewer values than links.
    bool ForwardTrsf(std::uint64_t system, bool updateModels, bool moveMounted);
    /// The same for explicit values; the current values stay as they are.
    bool ForwardTrsfWithValue(const std::vector<double>& values, bool updateModels, bool moveMounted);
    /// Brings all joints, models and mounted entities back to value zero.
    bool Reset();
    /// Whether the last two axes of the wrist turn against each other.
    bool IsCouplingRobot() const { return coupling; }
    void SetCouplingRobot(bool coupled) { coupling = coupled; }

    // --- systems ---------------------------------------------------------------------------------------
    void AddSystem(std::uint64_t system) { systems.insert(system); }
    void DeleteSystem(std::uint64_t system) { systems.erase(system); }
    void ClearSystem() { systems.clear(); }
    const std::set<std::uint64_t>& GetSystems() const { return systems; }

protected:
    GenericEntity() = default;

    /// Appends a link and records its position.
    /// @throws std::invalid_argument when the hash is 0 or taken, or the parent is not in the list yet.
    void AddNewLink(const std::shared_ptr<LinkRod>& link);
    /// Moves the other entity's structure here and makes carriers and mounted entities refer to this one.
    void TakeOverFrom(GenericEntity& other);
    /// Ends the mounting on both sides; the placement in the world stays.
    void Dismount();
    static void DismountFrom(GenericEntity& mounted) { mounted.Dismount(); }
    void UpdateModels() const;

    std::vector<std::shared_ptr<LinkRod>> links;
    std::map<std::uint64_t, unsigned short> linkOrder;
    std::vector<std::shared_ptr<Flange>> flanges;
    std::vector<double> currentValues;
    std::set<std::uint64_t> systems;
    gp_Trsf assembleTrsf;
    int installIndex = -1;
    GenericEntity* mountingEntity = nullptr;
    /// Fixed turn between the entity's placement and its chains.
    Rigid chainBase;

private:
    template <class Action>
    void ForEachLinkModel(Action action) const {
        for (const auto& link : links) {
            for (const auto& model : link->models) {
                if (!model.IsNull()) {
                    action(*model);
                }
            }
        }
    }
    void PlaceLinks(const double* values);
    void MoveMounted();
    void TakeOverMounting(GenericEntity& other);

    /// Frame that root links stand on, in the world; kept by UpdateRootTrsf.
    Rigid baseWorld;
    bool coupling = false;
};
