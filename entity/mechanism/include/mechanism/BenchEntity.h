#pragma once

#include <array>
#include <host/workpiece/GenericEntityConfig.h>
#include <mechanism/Export.h>
#include <set>
#include <vector>

class Workpiece;

/// A workbench or positioner: one kinematic chain, possibly without axes, whose flanges carry workpieces.
///
/// Workpieces are not owned: take one off before it is destroyed. Values are rad for rotary and mm for linear
/// joints; links keep identity centre transforms, so their axes are in the bench's frame.
class MECHANISM_EXPORT BenchEntity : public GenericEntityConfig {
public:
    BenchEntity();
    /// Takes over a built mechanism and is complete: Initial has run.
    /// @throws std::invalid_argument for a null parent, else as Initial; no workpiece refers to it then.
    explicit BenchEntity(GenericEntity* parent);
    ~BenchEntity() override;

    // --- framework operations ----------------------------------------------------------------------------
    /// Recomputes placement, end frame, workpieces and table from the flanges and links.
    /// @throws std::string "...BenchEntity::UpdateDH变位机结构错误：不支持多条运动链", logged at critical,
    ///         for more than one root link.
    void Initial() override;
    /// Names every model after the bench, then runs Initial. @throws as Initial.
    void UpdateLinkModelNames() override;
    /// Releases all workpieces; their models and mounting stay.
    void Delete() override;
    /// Writes the package to `path` (an empty path writes none), then answers the common keys and "type".
    Json::Value ToJson(const std::string& path) override;
    /// Reads "ID" and "HashID". Nothing happens without a root model.
    /// @throws std::invalid_argument naming key, value and expectation; the bench stays as it was.
    void LoadFromJson(const Json::Value& json) override;
    /// The base's data, and "WorkbenchSystem": the hashes of the bench's systems, ascending; only if any.
    Json::Value DataToJson(const std::string& path) override;

    // --- workpieces --------------------------------------------------------------------------------------
    /// Mounts a workpiece on the first free flange, or on a new one past the last. One that is already
    /// mounted on a flange of the bench stays there.
    /// @return the flange's index; -1 for null and for a workpiece that the bench has already.
    /// @throws std::invalid_argument, with nothing changed, when the workpiece cannot be mounted.
    int AddWorkpiece(Workpiece* w);
    /// Releases the workpiece: its carrier becomes null, its assembly transform the identity, and the set no
    /// longer holds it. It stays mounted until DisassembleModel.
    void DeleteWorkpiece(Workpiece* w);
    /// Whether the bench holds the workpiece.
    bool IsContainWorkpiece(Workpiece* const w) const { return workpieces.contains(w); }
    /// All workpieces that the bench holds; not owned.
    const std::set<Workpiece*>& GetAllWorkpieces() const { return workpieces; }

    // --- frames ------------------------------------------------------------------------------------------
    /// Two rows a link: translation (mm) of its centre transform, then its gp_Intrinsic_XYZ angles (rad); the
    /// fourth number is 0.
    const std::vector<std::array<double, 4>>& GetBenchDH() const { return benchDH; }
    /// Moves the bench to explicit values (rad or mm) and returns GetEndTrsfBy; too few values move nothing.
    /// @param flag also move the view models.
    gp_Trsf KinematicForward(const std::vector<double>& values, bool flag);
    /// Displacement of the flange frame from its rest placement, in the world.
    gp_Trsf GetEndTrsfBy();
    /// World frame of flange 0 at rest.
    gp_Trsf GetPlacementTrsf() { return GetRootMdlTrsf() * placementTrsf; }
    /// Hash of the link on which workpieces are mounted; 0 (the base) for a bench without axes.
    std::uint64_t GetPlacementLinkHash() const;
    /// Does nothing: ForwardTrsf moves the links.
    void Forward() {}

private:
    MECHANISM_NO_EXPORT void UpdateDH();

    std::set<Workpiece*> workpieces;
    gp_Trsf placementTrsf;
    std::vector<std::array<double, 4>> benchDH;
};
