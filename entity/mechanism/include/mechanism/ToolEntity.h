#pragma once

#include <host/workpiece/GenericEntityConfig.h>
#include <mechanism/Export.h>
#include <memory>
#include <utility>

struct NozzleParam;

/// The end tool on a robot's flange: a welding torch, or a painting tool with a spray cone.
///
/// Its frame is the mount transform of its own flange: the tool centre relative to the tool's base (mm, rad).
class MECHANISM_EXPORT ToolEntity : public GenericEntityConfig {
public:
    /// Only painting changes the behaviour; every other number is stored, exported and loaded unchanged.
    enum ToolWorkType : int { WorkTypeWelding = 0, WorkTypePainting = 2 };

    ToolEntity();
    /// Takes over a built mechanism; Initial computes tool frame and cone.
    /// @throws std::invalid_argument for a null parent.
    explicit ToolEntity(GenericEntity* parent);
    ~ToolEntity() override;

    /// Builds a torch from its parameters ("Type" must be "WeldGun"; the other keys are NozzleParam's): root
    /// model, three part models (tip; nozzle, neck and guard; body), flange at the tool centre, displayed.
    /// @return whether it was built, and the tool: a default one when it was not.
    /// @throws std::invalid_argument as NozzleParam::LoadFrom does.
    static std::pair<bool, std::shared_ptr<ToolEntity>> CreateToolEntityByParameter(const Json::Value& param);
    /// Rebuilds the tool in place; the part models keep their identities and the root model its placement.
    /// The tool frame follows with the next Initial, and a robot that carries the tool takes it over with its
    /// UpdateAssembleData.
    /// @return true without any change for another "Type" than "WeldGun"; false without any change when the
    ///         tool has not exactly three fixed models or the numbers give no torch.
    /// @throws std::invalid_argument as NozzleParam::LoadFrom does, without any change.
    bool UpdataToolParameterData(const Json::Value& param);

    /// What the tool does.
    ToolWorkType GetToolWorkType() { return workType; }
    /// Stores the work type; the spray cone stays as it is until Initial.
    void SetToolWorkType(ToolWorkType type) { workType = type; }
    /// The end part, the one that touches the workpiece; null without one.
    opencascade::handle<ViewShape> GetEndToolMdl() { return endToolMdl; }
    /// The tool frame as the last Initial took it from the flange.
    const gp_Trsf& GetToolTrsf() const { return toolTrsf; }
    /// Does nothing: tools have no joints.
    void Forward() {}
    /// The end part touches the workpiece while a program is simulated, so its tolerance is 0 then.
    void SetSimulatorState(bool simulating);

    /// Updates the spray cone of a painting tool to the configured switch and sizes.
    /// @throws Standard_Failure of the kernel where the sizes make no cone; the old cone stays.
    void SetPaintedTool();
    /// Builds or refreshes the spray cone at a frame relative to the tool's base. While the host loads the
    /// entity's mesh the cone is left as it is and a debug record says so. @throws as SetPaintedTool.
    void UpdatePaintedModel(const gp_Trsf& trsf);
    /// The spray cone, or null.
    opencascade::handle<ShapeEntity> GetPaintedMdl() const { return paintedMdl; }

    /// Takes over the work type (parameter "ToolWorkType") and the flange's frame; a painting tool gets a
    /// cone. A tool that was mounted before it had a frame passes the frame to its carrier.
    /// @throws std::invalid_argument naming a "ToolWorkType" that is no whole number; nothing has changed.
    /// Standard_Failure of the kernel where the configured sizes make no cone; type and frame are new.
    void Initial() override;
    /// Writes the package to `path` (an empty path writes none), then answers the common keys and its own.
    Json::Value ToJson(const std::string& path) override;
    /// Nothing happens without a root model.
    /// @throws std::invalid_argument naming the key for a wrong type; the tool
    ///         stays as it was.
    void LoadFromJson(const Json::Value& json) override;
    /// Names every model after the tool, then runs Initial. @throws as Initial.
    void UpdateLinkModelNames() override;
    /// "type" 4, "WorkType", and "EndHashID" where there is an end part.
    void ExportParaToJson(Json::Value& out) override;

private:
    void UpdateCollisionMdlState() override;
    MECHANISM_NO_EXPORT bool CheckPaintData() const;
    MECHANISM_NO_EXPORT void PlaceRoot(const gp_Trsf& trsf);
    MECHANISM_NO_EXPORT void PutOnParts(const std::vector<opencascade::handle<ShapeEntity>>& parts,
                                        const Json::Value& param);

    gp_Trsf toolTrsf;
    opencascade::handle<ViewShape> endToolMdl;
    double endToolGap = 5.0;
    ToolWorkType workType = WorkTypeWelding;
    opencascade::handle<ShapeEntity> paintedMdl;
};
