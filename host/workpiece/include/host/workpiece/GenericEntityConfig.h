#pragma once

#include <host/workpiece/GenericEntity.h>

/// A configurable mechanism: links from JSON, assembly, package export.
class GenericEntityConfig : public GenericEntity {
public:
    GenericEntityConfig() = default;
    /// Takes over the structure of an already built mechanism: links, flanges, models, name, hash, systems,
    /// values, mounting and parameters. The parent is left without them.
    /// @throws std::invalid_argument for a null parent.
    explicit GenericEntityConfig(GenericEntity* parent);
    ~GenericEntityConfig() override = default;

    /// Reads what DataToJson writes: the common keys, then "links", "flanges", "arm_structure", "coupled" and
    /// "parameters" where they are present. What is mounted on a flange moves to the new flange of the same
    /// number, or is taken off where there is none.
    /// @throws std::invalid_argument naming the key; links before the faulty one are kept.
    void LoadFromJson(const Json::Value& json) override;
    /// Makes the shape the entity's root model, at the entity's placement.
    void SetEntityShape(const opencascade::handle<ViewShape>& shape) override;
    MechanismType GetMechanismType() override { return mechanismType; }
    /// Names every model after the entity: "NAME - base", "NAME - axis N".
    void UpdateLinkModelNames() override;
    /// The whole structure: common keys, "type", "parameters", "arm_structure", "coupled", "links" (records
    /// of LinkToJson with limits and model identifiers), "flanges".
    Json::Value DataToJson(const std::string& path) override;
    /// Recomputes the end-centre transform and the current values from links and flanges.
    void Initial() override;
    /// Triangulates every model that GetSubCollisionParts lists; distance queries need triangles.
    void CreateCollisionMdl() override;
    /// Every model with geometry that takes part in collision checking: fixed models, then link models.
    std::vector<opencascade::handle<ShapeEntity>> GetSubCollisionParts() override;
    /// Moves links, models and mounted entities to the entity's placement.
    void UpdateAssembleData() override;
    /// Writes "type" (the mechanism type) and "parameters".
    void ExportParaToJson(Json::Value& out) override;
    /// Resizes the current values to one a link; new ones are 0.
    void UpdateModelPara() override;

    /// Creates the link whose "link_hash" is new, or updates the one that has it, and places all links anew.
    ///
    /// Keys: "link_hash" (unsigned, not 0), "name", "joint_type" (3, 4, 5, 7, 8), "joint_value" (rad or mm),
    /// "parent_link_hash" (0 for a root), "center_trsf" (six numbers, DataHandle::TrsfToJsonSix); where
    /// present also "axis_min" and "axis_max" (degrees; mm where linear), "joint_axis" (origin and direction
    /// in the link's frame, six numbers; the direction is types 7 and 8's own, and must be the named axis of
    /// 3, 4 and 5) and "axis_models" (identifiers of the link's models).
    ///
    /// @param carryBodies what a new "center_trsf" does to an existing link. False: only its frame and joint
    /// axis change; its models, flanges, joint origin and child links keep their places in the world at joint
    /// value zero. True: they keep their places in the link's frame and move with it.
    /// @return the link, which the entity owns.
    /// @throws std::invalid_argument naming key, value and expectation; nothing changed then.
    LinkRod* UpdateLinkRodPara(const Json::Value& json, bool carryBodies);
    /// Whether a record is well formed in itself; its link and parent are not looked up.
    /// @throws std::invalid_argument as UpdateLinkRodPara does.
    static void CheckLinkRecord(const Json::Value& json);
    /// The keys "name", "joint_type", "joint_value", "link_hash", "parent_link_hash", "center_trsf" of a
    /// link.
    Json::Value LinkToJson(LinkRod* const link) const;

    /// World frame of the end link of chain 0, mm, as the last ForwardTrsf left it; the entity's placement
    /// where there are no links.
    gp_Trsf GetCurrentEndTrsf() const;
    /// Flange frame of a chain relative to its end link, mm, or to the entity where there are no links.
    gp_Trsf GetEndCenTrsf(int chain) const;
    /// Frame of an install position (flange) relative to the entity, mm, in the current pose.
    /// @throws std::out_of_range naming the index.
    gp_Trsf GetInstalledTrsf(int index) const;
    /// World frame of the flange of chain 0, mm, in the current pose: GetCurrentEndTrsf() * GetEndCenTrsf(0).
    gp_Trsf GetCurrentTrsfTool0() const;

    /// Mounts another entity on a flange of this one and moves it there: its placement becomes the flange's
    /// world frame times its assembly transform. It leaves the carrier that it had, and follows this one with
    /// every ForwardTrsf that moves mounted entities.
    ///
    /// An index one past the last adds a flange: at the end-centre frame on the end link, at the link's own
    /// frame on any other, at the entity's frame on the base.
    /// @param other not null; not owned.
    /// @param place "install_index", the flange, and "link_hash", for a new flange its link (0 for the base),
    /// for an existing one its link or 0.
    /// @throws std::invalid_argument naming the key when there is no such link or flange, the flange is
    ///         occupied or on another link, or the entity would carry itself; nothing changed then.
    void AssembleOtherModel(GenericEntityConfig* other, const Json::Value& place);
    /// Takes a mounted entity off its flange. Its placement in the world stays, its assembly transform
    /// becomes the identity. Without effect where this entity does not carry it.
    void DisassembleModel(GenericEntityConfig* other);

    /// Adds models as children of the root model, in the order of their creation.
    /// @param keep true: they are extra models, which keep their place in the world and are neither fixed
    /// models nor part of packages; false: they replace the fixed models.
    void AddSubMdlList(const std::set<opencascade::handle<ShapeEntity>>& models, bool keep);
    /// Removes an extra model from the entity and the view; any other model is ignored.
    void RemoveSubMdl(const opencascade::handle<ShapeEntity>& model);
    /// The extra models that AddSubMdlList added with keep = true.
    const std::vector<opencascade::handle<ShapeEntity>>& GetExtraMdls() const { return extraMdls; }

    /// Writes a folder with manifest.json and one BRep file a model. The manifest is DataToJson with
    /// "models", an entry ("id", "name", "file", "link_hash" where it belongs to a link) for each fixed
    /// model, then for each model of the links, and "root", the entry of the root model; one without geometry
    /// has no "file".
    /// @return false for a null entity, an empty path (nothing is written) or a folder that cannot be
    /// written.
    static bool ExportEntityPkg(GenericEntityConfig* entity, const std::string& path);

    /// 0 not stated, 1 and 2 the two arm structures; code 1 stands on a base turned by pi about Z.
    int GetArmStructureCode() const { return armStructureCode; }
    /// Sets the arm structure and moves links, models and mounted entities accordingly.
    void SetArmStructureCode(int code);
    /// The mechanism's own parameters, as its document gives them under "parameters".
    const Json::Value& GetParameters() const { return parameters; }
    /// Flange frame of chain 0 relative to its end link, mm, as the last Initial computed it.
    const gp_Trsf& GetEndCenterTrsf() const { return endCenterTrsf; }

protected:
    void UpdateState() override;

    /// 0 not stated, 1 and 2 the two arm structures.
    int armStructureCode = 0;
    /// The mechanism's own parameters.
    Json::Value parameters;
    /// Kind of mechanism, set by the derived class.
    MechanismType mechanismType = MechanismGeneric;
    /// Flange frame of chain 0 relative to its end link, mm.
    gp_Trsf endCenterTrsf;

private:
    std::vector<opencascade::handle<ShapeEntity>> extraMdls;
    void ReplaceFlanges(const Json::Value& json);
    void Reframe(LinkRod& link, const gp_Trsf& center, JointType type, bool carryBodies);
};
