#pragma once

#include <array>
#include <host/tools/LocEuler.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <mechanism/Export.h>
#include <memory>
#include <vector>

class RobotWorkspace;
class ToolEntity;

/// State that selects the collision gap: 0 with the configured gap, 1 and 2 with fixed ones.
enum CheckCollisionState : int { CollisionNormal = 0, CollisionWide = 1, CollisionTight = 2 };

/// A robot arm: six axes, or seven links with a coupled wrist.
///
/// Its links form one chain, each further link being child 0 of the one before; axis n is the link at
/// position n - 1. The arm computes its table of modified (proximal) Denavit-Hartenberg parameters from the
/// zero pose and rewrites every link to it, after which every link turns about its own Z. Laws that tests
/// check for every arm: rewriting moves no joint axis, model or flange at any joint values, and the table of
/// a rewritten arm is the same table. Lengths in mm, angles in rad.
///
/// Failures are logged at critical and thrown as std::string, "...RobotEntity::Operation" + message.
class MECHANISM_EXPORT RobotEntity : public GenericEntityConfig {
public:
    /// One row: a (along the previous X), alpha (about it), d (along the new Z), theta (about it).
    using DhRow = std::array<double, 4>;
    /// Number of tools that can be read; the list itself may be longer.
    static constexpr int ToolLimit = 11;

    RobotEntity();
    /// Takes over a built mechanism and is complete: Initial has run.
    /// @throws std::invalid_argument for a null parent; std::out_of_range for one without a flange.
    explicit RobotEntity(GenericEntity* parent);
    ~RobotEntity() override;

    // --- framework operations ----------------------------------------------------------------------------
    /// Derives everything from the links: table, normalised links, end frame, tool frame model, workspace.
    /// @throws std::out_of_range "invalid vector subscript" for a robot without a flange, or whose chain
    /// gives fewer rows than it has links.
    void Initial() override;
    /// As the base. A maximum-reach model that the view shows stays, but cannot be selected.
    void Hide(size_t system) override;
    /// Writes the package to `path` (an empty path writes none), then answers the robot's document.
    Json::Value ToJson(const std::string& path) override;
    /// Restores the robot from its document; "type" is not looked at. Nothing happens without a root model.
    /// @throws std::invalid_argument naming the key for a wrong type; the robot
    ///         stays as it was. std::string "...RobotEntity::LoadFromJson存在异常的空数据" for a
    ///         table with more rows than the chain has links; the links up to there have their new rows then.
    void LoadFromJson(const Json::Value& json) override;
    /// Joint limits of the robot's system, each narrowed by the margin (rad). They come out in the order of
    /// the coupling record of this robot's hash, from `index[0]` on; an unfilled record gives an empty list.
    /// @param system 666 follows the record's index list where the record is enabled; any other value takes
    ///               consecutive links.
    /// @throws std::string "...RobotEntity::GetLimit限位错误" when the margin leaves no range.
    std::vector<std::pair<double, double>> GetLimit(size_t system, double margin) override;
    /// As the base; a coupled wrist then has its sixth value set to minus its fifth.
    void SetCurrentValue(const std::vector<double>& values, size_t system) override;
    /// Names every model after the robot and updates table, links and tool frame.
    /// @throws as Initial.
    void UpdateLinkModelNames() override;
    /// To be called after mounting: a tool on flange 0 takes the current slot of the tool list
    /// while that is empty (identity within 1e-7), else the next one, which becomes current; the tool joins
    /// this robot's system alone. A tool that gets its frame only after it was mounted (ToolEntity::Initial)
    /// calls this; after a later change of the frame the host does.
    void UpdateAssembleData() override;
    /// out["RobotBrand"] := brand code.
    void ExportParaToJson(Json::Value& out) override;
    /// Sizes the initial values and takes the six defaults of CADParamConfig.
    void UpdateModelPara() override;

    // --- kinematic data -----------------------------------------------------------------------------------
    /// The table, one row a link, root link first.
    const std::vector<DhRow>& GetArmDH() const { return armDH; }
    /// Computes the table from the zero pose of any configurable mechanism; empty for any other entity.
    static std::vector<DhRow> GetArmDH1989(GenericEntity* entity);
    /// Fixed rotation before the table: by pi about Z for arm structure 1, else the identity.
    gp_Trsf GetRobotBaseDHTrsf() const;
    /// World frame in which the table starts, mm.
    gp_Trsf GetRobotAssembleTrsf() const;
    /// Root placement * end-centre transform.
    gp_Trsf GetDefaultTCPTrsf() const;
    /// Always 6.
    int GetRobotDOF() const { return 6; }
    /// Hash of the robot's system, which is its own hash.
    std::uint64_t GetRobotSystem() const { return GetHashIndex(); }
    /// Joint values (rad) that the robot starts from.
    const std::vector<double>& GetInitialValue() const { return initialValues; }

    // --- axes ---------------------------------------------------------------------------------------------
    /// Link of axis n, 1 <= n <= link count.
    /// @throws std::string "...RobotEntity::GetAxisvector传入index错误，数据不在范围内" otherwise.
    LinkRod* GetAxis(int axis) const;
    /// World transform of the link at a position.
    /// @throws std::out_of_range "invalid vector subscript" where there is none.
    const gp_Trsf& GetCurJointTrsf(int position) const;
    /// Joint origin of the link at a position, in its own frame; the zero point past the end.
    gp_Pnt GetLinkRodsLocation(int position) const;
    /// World positions of the joint origins of the links at positions 1 to 6.
    /// @throws std::out_of_range "invalid vector subscript" for fewer than seven links.
    std::vector<gp_Pnt> GetLinkJointPos() const;
    /// False when the robot hangs within 20 degrees of straight down.
    bool IsRobotUp() const;

    // --- tools --------------------------------------------------------------------------------------------
    /// @{
    /// The tool frames relative to the flange, by tool index.
    void SetTools(const std::vector<gp_Trsf>& newTools) { tools = newTools; }
    const std::vector<gp_Trsf>& GetTools() const { return tools; }
    /// @}
    /// Tool frame relative to the flange, growing the list with identities up to index 10.
    /// An index past 10 logs an error and returns tool 0 (std::out_of_range where there is none).
    /// @throws std::out_of_range "invalid vector subscript" for a negative index.
    const gp_Trsf& GetToolFromVector(int index) const;
    /// @{
    /// The current tool: its frame as GetToolFromVector returns it, and its index.
    const gp_Trsf& GetCurrentTool() const { return GetToolFromVector(currentTool); }
    int GetToolIndex() const { return currentTool; }
    /// @}
    /// Makes a tool current and returns its record.
    /// @throws std::out_of_range as GetToolFromVector; a negative index leaves the current tool.
    Json::Value ChangeCurrentTool(int index);
    /// Stores the tool of a record ("ToolIndex", "X", "Y", "Z" in mm, then "RX", "RY", "RZ" in degrees for
    /// "Type" 0, else the quaternion "Q1" w, "Q2" x, "Q3" y, "Q4" z). Null does nothing.
    /// @throws std::invalid_argument naming key, value and expectation, with no tool changed: an index is 0
    /// to 65535, every number finite.
    void SetToolData(const Json::Value& json);
    /// Record of the current tool, with both forms of its rotation.
    Json::Value GetToolData() const;
    /// The tool on flange 0, or null.
    ToolEntity* GetToolEntity() const;
    /// The mounted tool's parts, and the inverse of tool * offset; an empty list and the identity without a
    /// tool.
    std::pair<std::vector<opencascade::handle<ShapeEntity>>, gp_Trsf> GetZeroToolAndTrsf() const;
    /// Places the mounted tool's parts at the zero pose, then returns to the current pose.
    void ResetToolPosition();

    // --- tool centre --------------------------------------------------------------------------------------
    /// Shift along the tool's Z (mm), applied after the tool.
    void SetZOffset(double z);
    /// The shift in force, mm.
    double GetZOffset() const;
    /// X_FT * X_TZ: the current tool, then the offset. @throws as GetToolFromVector, as do the next two.
    gp_Trsf GetCurrentToolWithOffset() const;
    /// X_WT = X_WE * X_EF * X_FT * X_TZ: end link, flange, tool, offset.
    gp_Trsf GetCurrentTrsfTCP() const;
    /// The same as a pose: mm, and gp_Intrinsic_XYZ angles in rad.
    LocEuler GetCurrentTCP() const;
    /// The axis triad at the tool centre, or null.
    opencascade::handle<BaseViewShape> GetToolFrame() const { return toolFrameMdl; }
    /// Rebuilds the triad as a child of the end link's first model. The Z offset is not shown.
    /// @throws std::out_of_range as GetToolFromVector.
    void UpdateToolFrame();

    // --- workbenches --------------------------------------------------------------------------------------
    /// Lists the bench and enters it into this robot's system; the first one becomes current.
    /// @throws std::invalid_argument for null.
    void AddWorkbench(GenericEntity* bench);
    /// Takes the bench off the list and out of this robot's system. A bench that is not listed still moves a
    /// positive current index down by one.
    /// @throws std::invalid_argument for null.
    void DeleteWorkbench(GenericEntity* bench);
    /// Makes a listed bench current; ignored for one that is not listed.
    void SetCurrentWorkbench(GenericEntity* const bench);
    /// Null when there is none or the index is negative.
    /// @throws std::out_of_range "invalid vector subscript" for an index past the end.
    const GenericEntity* GetCurrentWorkbench() const;
    /// Index of the current bench in the list, -1 for none.
    int GetCurrentWorkbenchIndex() const { return currentWorkbench; }
    /// The listed benches; not owned.
    const std::vector<GenericEntity*>& GetWorkbenches() const { return workbenches; }

    // --- collision state ----------------------------------------------------------------------------------
    /// Sets the collision gap of the robot and its mounted tool: the configured one, 20 mm, 2 mm, or 30 mm
    /// for any other state. The gaps are stored for clearance checks; nothing reads them yet.
    void SetCurrentCollisionState(CheckCollisionState state);
    /// The state that was set last.
    CheckCollisionState GetCurrentCollisionState() const { return collisionState; }

    // --- workspace display --------------------------------------------------------------------------------
    /// Shows or hides the workspace envelope.
    /// @throws std::logic_error for a robot that was not through Initial.
    void ShowBestWorkspace(bool show);
    /// The builder of the envelope; null before Initial.
    const std::shared_ptr<RobotWorkspace>& GetWorkspace() const { return workspace; }
    /// Rebuilds the maximum-reach model from the record of the last build of the envelope.
    /// @throws std::logic_error as ShowBestWorkspace.
    void UpdateMaxWork();
    /// Makes the maximum-reach model a spheroid below the root model; it is not displayed.
    /// @param a shoulder offset, lateral offset, shoulder height and reach (mm, in the root model's frame):
    /// centre (0, a[1], a[2]), equatorial radius a[3], polar half-axis a[3] - a[0]. A reach below 0.001
    /// leaves the model as it is. Numbers that make no spheroid are logged at err, and the old model stays.
    void SetMaxWorkSpaceModel(const std::array<double, 4>& a);
    /// Refreshes a maximum-reach model that the view knows, or hides it.
    void SetUnSaftyWorkSpaceVisible(bool visible);
    /// Null until there is one.
    const opencascade::handle<BaseViewShape>& GetUnsafeWorkspaceModel() const { return unsafeWorkspaceMdl; }

protected:
    /// Sets the collision tolerance of every model of axes 1 to 6.
    void UpdateCollisionMdlState() override;

private:
    MECHANISM_NO_EXPORT void UpdateInfo();
    MECHANISM_NO_EXPORT void UpdateToolByDH();
    MECHANISM_NO_EXPORT void Normalized();
    /// Tries a document's table and links on a copy of the chain, so that what is refused leaves the robot as
    /// it was.
    MECHANISM_NO_EXPORT void TryOnCopy(const Json::Value& json, const std::vector<DhRow>& table) const;
    MECHANISM_NO_EXPORT void ForgetWorkbench(const GenericEntity* bench);
    MECHANISM_NO_EXPORT void SetToolInVector(const gp_Trsf& tool, int index);
    MECHANISM_NO_EXPORT RobotWorkspace& RequireWorkspace() const;
    MECHANISM_NO_EXPORT void ReplaceUnsafeModel(const TopoDS_Shape& spheroid);

    std::shared_ptr<RobotWorkspace> workspace;
    CheckCollisionState collisionState = CollisionNormal;
    LinkRod* rootLink = nullptr;
    opencascade::handle<BaseViewShape> toolFrameMdl;
    opencascade::handle<BaseViewShape> unsafeWorkspaceMdl;
    int currentTool = 0;
    mutable std::vector<gp_Trsf> tools;
    std::vector<double> initialValues;
    std::vector<DhRow> armDH;
    gp_Trsf zOffset;
    std::vector<GenericEntity*> workbenches;
    int currentWorkbench = -1;
    int robotBrand = 0;
};
