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
    /// Brings the end-centre transform and the model parameters in step with the structure.
    void Initial() override;
    /// Triangulates every part, which is what distance queries work on.
    void CreateCollisionMdl() override;
    /// Every part of the entity that has geometry: fixed models, then link models.
    std::vector<opencascade::handle<ShapeEntity>> GetSubCollisionParts() override;
    /// Brings what is mounted here to its place.
    void UpdateAssembleData() override;
    /// Writes "type" (the mechanism type) and "parameters".
    void ExportParaToJson(Json::Value& out) override;
    /// Gives every joint a current value.
    void UpdateModelPara() override;

    /// Creates the link whose "link_hash" is new, or updates the one that has it.
    ///
    /// Keys: "link_hash" (unsigned, not 0), "name", "joint_type" (3, 4, 5, 7, 8), "joint_value" (rad or mm),
    /// "parent_link_hash" (0 for a root), "center_trsf" (six numbers, DataHandle::TrsfToJsonSix); where
    /// present also "axis_min" and "axis_max" (degrees; mm where linear), "joint_axis" (origin and direction
    /// in the link's frame, six numbers; the direction is types 7 and 8's own, and must be the named axis of
    /// 3, 4 and 5) and "axis_models" (identifiers of the link's models).
    ///
    /// @param carryBodies false: the frame of an existing link is a choice of coordinates, so its models,
    /// flanges, joint origin and child links stay where they are in the zero pose while frame and joint axis
    /// change. True: they keep their place in the link's frame and move with it.
    /// @return the link. @throws std::invalid_argument naming key, value and expectation; nothing changed
    /// then.
    LinkRod* UpdateLinkRodPara(const Json::Value& json, bool carryBodies);
    /// Whether a record is well formed in itself; its link and parent are not looked up.
    /// @throws std::invalid_argument as UpdateLinkRodPara does.
    static void CheckLinkRecord(const Json::Value& json);
    /// The keys "name", "joint_type", "joint_value", "link_hash", "parent_link_hash", "center_trsf" of a
    /// link.
    Json::Value LinkToJson(LinkRod* const link) const;

    /// World transform of the end link of chain 0 in the current pose; the placement where there are no
    /// links.
    gp_Trsf GetCurrentEndTrsf() const;
    /// Flange frame of a chain relative to its end link, or to the entity where there are no links.
    gp_Trsf GetEndCenTrsf(int chain) const;
    /// Placement of an install position (flange) relative to the entity, in the current pose.
    /// @throws std::out_of_range naming the index.
    gp_Trsf GetInstalledTrsf(int index) const;
    /// World transform of the flange of chain 0 in the current pose.
    gp_Trsf GetCurrentTrsfTool0() const;

    /// Mounts another entity on this one. A place one past the last is added: on the end link at the
    /// end-centre frame, on any other link, or the base of a mechanism with links, at its own frame.
    /// @param place "install_index" (flange) and "link_hash": the link of a new place, 0 for the base; for a
    /// place that is there its own link or 0.
    /// @throws std::invalid_argument naming the key when there is no such link or place, the place is taken
    ///         or sits on another link, or the entity would carry itself; nothing changed then.
    void AssembleOtherModel(GenericEntityConfig* other, const Json::Value& place);
    /// Takes a mounted entity off; its placement in the world stays, its assembly transform is the identity.
    void DisassembleModel(GenericEntityConfig* other);

    /// Hangs models below the root model, in the order of their creation.
    /// @param keep true: they come in addition and stand beside the structure (they are not among the fixed
    /// models, nor in packages) and stay where they are in the world; false: they become the fixed models
    /// instead of those there were.
    void AddSubMdlList(const std::set<opencascade::handle<ShapeEntity>>& models, bool keep);
    /// Takes a model that stands beside the structure off, and out of the view; any other is left alone.
    void RemoveSubMdl(const opencascade::handle<ShapeEntity>& model);
    /// What AddSubMdlList has put beside the structure.
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
    void SetArmStructureCode(int code);
    const Json::Value& GetParameters() const { return parameters; }
    const gp_Trsf& GetEndCenterTrsf() const { return endCenterTrsf; }

protected:
    void UpdateState() override;

    int armStructureCode = 0;
    Json::Value parameters;
    MechanismType mechanismType = MechanismGeneric;
    gp_Trsf endCenterTrsf;

private:
    std::vector<opencascade::handle<ShapeEntity>> extraMdls;
    void ReplaceFlanges(const Json::Value& json);
    void Reframe(LinkRod& link, const gp_Trsf& center, JointType type, bool carryBodies);
};
