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
    /// Whether every value (rad, or mm where linear) lies within its link's limits, the margin kept at both
    /// ends; values past the last link are ignored.
    bool IsInLimit(const std::vector<double>& values, size_t system, double margin) const override;
    /// (minimum + margin, maximum - margin) of every link.
    /// @throws std::invalid_argument naming the joint when the margin leaves no range.
    std::vector<std::pair<double, double>> GetLimit(size_t system, double margin) override;
    void TransformedBy(const gp_Trsf& trsf) override;
    /// Number of links, whatever the system.
    int GetDOF(size_t system) const override;
    const std::vector<double>& GetCurrentValue(size_t system) const override;
    /// Stores one value a joint (rad, or mm where linear), in the order of the links; further ones are
    /// ignored. Nothing moves: call ForwardTrsf to place links, models and mounted entities.
    /// @throws std::invalid_argument when there are fewer values than joints.
    void SetCurrentValue(const std::vector<double>& values, size_t system) override;
    std::vector<opencascade::handle<ShapeEntity>> GetFixMdls() override;
    std::vector<opencascade::handle<ShapeEntity>> GetCollisionFixMdls() override;

    // --- links -----------------------------------------------------------------------------------------
    /// Number of links.
    int GetLinkSize() const { return static_cast<int>(links.size()); }
    /// Link by position in the list, from 0; null past the end. The entity owns it.
    LinkRod* GetLink(size_t position) const;
    /// Link by its hash, null where there is none.
    LinkRod* GetLinkByHash(std::uint64_t hash) const;
    /// Root link of a chain, null where there is no such chain.
    LinkRod* GetRootLink(int chain) const;
    /// Last link of a chain, following child 0; null where there is no such chain.
    LinkRod* GetEndLink(int chain) const;
    /// Number of links without a parent, which is the number of chains.
    int GetRootLinkNum() const;
    /// Position of the link with that hash.
    /// @throws std::out_of_range naming the hash when there is none.
    unsigned short GetLinkIndexOrder(std::uint64_t hash) const;

    // --- flanges and mounting --------------------------------------------------------------------------
    /// Appends a flange; its index is GetFlangeSize() before the call.
    void AddFlange(const std::shared_ptr<Flange>& flange);
    /// Flange by index from 0, null where there is none. The entity owns it.
    Flange* GetFlangeByIndex(int index) const;
    /// Number of flanges.
    int GetFlangeSize() const { return static_cast<int>(flanges.size()); }
    /// World frame of a flange as the last ForwardTrsf left its link, mm.
    gp_Trsf GetFlangeWorldTrsf(const Flange& flange) const;
    /// World frame, mm, at which the entity is installed: the carrier's flange times the assembly transform,
    /// or the entity's own placement where no entity carries it.
    gp_Trsf GetParentAssembleTrsf() const;
    /// The entity that carries this one, or null.
    GenericEntity* GetMountingEntity() const { return mountingEntity; }
    /// Index of the carrier's flange on which the entity is mounted; -1 where none carries it.
    int GetInstallIndex() const { return installIndex; }
    /// Placement relative to the carrier's flange, mm; the identity at first.
    const gp_Trsf& GetAssembleTrsf() const { return assembleTrsf; }
    /// Sets that placement; the entity moves with the carrier's next ForwardTrsf.
    void SetAssembleTrsf(const gp_Trsf& trsf) { assembleTrsf = trsf; }

    // --- motion ----------------------------------------------------------------------------------------
    /// Forward kinematics: recomputes the world frame of every link (LinkRod::worldTrsf) from the current
    /// values. Call it after SetCurrentValue, which stores values and moves nothing.
    /// @param system whose values; an entity with one vector of values uses it for every system.
    /// @param updateModels also place the view models of the links.
    /// @param moveMounted also move the entities mounted on its flanges, and what they carry.
    /// @return false, with nothing moved, when there are fewer values than links.
    bool ForwardTrsf(std::uint64_t system, bool updateModels, bool moveMounted);
    /// As ForwardTrsf, for values given here (rad, or mm where linear; one a link): the links take them, the
    /// current values stay as they are.
    bool ForwardTrsfWithValue(const std::vector<double>& values, bool updateModels, bool moveMounted);
    /// Sets all current values to zero and moves links, models and mounted entities accordingly.
    /// @return as ForwardTrsf.
    bool Reset();
    /// Whether the arm has a coupled wrist: its sixth value is minus its fifth.
    bool IsCouplingRobot() const { return coupling; }
    /// Sets whether the arm has a coupled wrist.
    void SetCouplingRobot(bool coupled) { coupling = coupled; }

    // --- systems ---------------------------------------------------------------------------------------
    /// Adds the entity to a robot system, given by its hash.
    void AddSystem(std::uint64_t system) { systems.insert(system); }
    /// Removes the entity from a robot system; without effect where it is no member.
    void DeleteSystem(std::uint64_t system) { systems.erase(system); }
    /// Removes the entity from all robot systems.
    void ClearSystem() { systems.clear(); }
    /// Hashes of the robot systems that the entity belongs to.
    const std::set<std::uint64_t>& GetSystems() const { return systems; }

protected:
    GenericEntity() = default;

    /// Appends a link, records its position and adds a current value of zero.
    /// @throws std::invalid_argument when the hash is 0 or taken, or the parent is not in the list yet.
    void AddNewLink(const std::shared_ptr<LinkRod>& link);
    /// Moves the other entity's structure here; its carrier and mounted entities refer to this one
    /// afterwards.
    void TakeOverFrom(GenericEntity& other);
    /// Takes the entity off its carrier's flange; its placement in the world stays.
    void Dismount();
    /// Calls Dismount of another entity, which derived classes cannot reach otherwise.
    static void DismountFrom(GenericEntity& mounted) { mounted.Dismount(); }
    /// Places every link's models at the link's world frame.
    void UpdateModels() const;

    /// Links, every parent before its children.
    std::vector<std::shared_ptr<LinkRod>> links;
    /// Position in `links` by link hash.
    std::map<std::uint64_t, unsigned short> linkOrder;
    /// Flanges by index.
    std::vector<std::shared_ptr<Flange>> flanges;
    /// Current joint values, one a link: rad, or mm where linear.
    std::vector<double> currentValues;
    /// Hashes of the robot systems that the entity belongs to.
    std::set<std::uint64_t> systems;
    /// Placement relative to the carrier's flange, mm.
    gp_Trsf assembleTrsf;
    /// Index of the carrier's flange; -1 where none carries it.
    int installIndex = -1;
    /// The entity that carries this one, not owned; null where none does.
    GenericEntity* mountingEntity = nullptr;
    /// Fixed rotation between the entity's placement and the frame of its root links.
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
