#pragma once

#include <cstdint>
#include <functional>
#include <host/workpiece/MechanismTypes.h>
#include <host/workpiece/ShapeEntity.h>
#include <json/value.h>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Root of the entity framework: a named, hash-identified object with a root view model and fixed models.
///
/// All virtual operations of the family are declared here, in the order that hosts bind to; derived classes
/// override them and add none in between.
class Entity {
public:
    Entity() = default;
    Entity(const Entity&) = delete;
    Entity& operator=(const Entity&) = delete;

    /// Removes the entity's models from the view for good. The object itself stays valid.
    virtual void Delete();
    /// Hides all models; the view keeps them.
    /// @param system robot system that asks. 0 hides always; any other value leaves an entity visible whose
    /// systems do not include it.
    virtual void Hide(size_t system);
    /// Common keys of every entity: "ID" (root model's identifier, empty without one), "HashID", "name".
    /// @param path reserved for entities that write a package; not used here.
    virtual Json::Value ToJson(const std::string& path);
    /// Reads the entity from the document that DataToJson writes.
    /// @throws std::invalid_argument naming the key of a value that is refused.
    virtual void LoadFromJson(const Json::Value& json) = 0;
    /// Sets the shape that represents the entity, as its root model.
    virtual void SetEntityShape(const opencascade::handle<ViewShape>& shape) = 0;
    /// Sets the root model, which is placed at the entity's placement and becomes the parent of the fixed
    /// models. Null removes it.
    virtual void SetRootMdl(const opencascade::handle<ViewShape>& model);
    /// Sets the placement of the entity in the world, mm; links, models and mounted entities move with it.
    virtual void SetRootMdlTrsf(const gp_Trsf& trsf) = 0;

protected:
    /// Sets the collision gap (mm) of this kind of entity: CADParamConfig::defaultCollisionGap.
    virtual void UpdateCollisionMdlState();

public:
    virtual ~Entity();
    /// Sets the placement of the entity in the world, mm.
    /// @param follow true: links, models and mounted entities move at once; false: they move with the next
    /// GenericEntity::ForwardTrsf.
    virtual void UpdateRootTrsf(const gp_Trsf& trsf, bool follow) = 0;
    /// Number of joints of the entity, all systems together.
    virtual int EntityDof() const = 0;
    /// Whether all joint values (rad, mm where linear) keep the margin to both limits.
    /// @param system robot system whose values they are.
    virtual bool IsInLimit(const std::vector<double>& values, size_t system, double margin) const = 0;
    /// Minimum and maximum of every joint (rad, mm where linear), narrowed by the margin at both ends.
    /// @param system robot system whose joints are asked for.
    virtual std::vector<std::pair<double, double>> GetLimit(size_t system, double margin) = 0;
    /// Moves the entity by a transform given in the world, mm: the new placement is trsf * old placement.
    virtual void TransformedBy(const gp_Trsf& trsf) = 0;
    /// Number of joint values that the entity has in a system.
    virtual int GetDOF(size_t system) const = 0;
    /// Current joint values in a system, rad or mm.
    virtual const std::vector<double>& GetCurrentValue(size_t system) const = 0;
    /// Stores the joint values of a system, rad or mm. Nothing moves until GenericEntity::ForwardTrsf.
    virtual void SetCurrentValue(const std::vector<double>& values, size_t system) = 0;
    /// Kind of mechanism.
    virtual MechanismType GetMechanismType() = 0;
    /// The fixed models, in the order of their keys.
    virtual std::vector<opencascade::handle<ShapeEntity>> GetFixMdls() = 0;
    /// The fixed models that take part in collision checking.
    virtual std::vector<opencascade::handle<ShapeEntity>> GetCollisionFixMdls() = 0;
    /// Renames every model after the entity and recomputes what Initial derives.
    virtual void UpdateLinkModelNames() = 0;
    /// The document that LoadFromJson reads.
    /// @param path reserved for entities that write a package.
    virtual Json::Value DataToJson(const std::string& path) = 0;
    /// Recomputes the data that is derived from links, flanges and models.
    virtual void Initial() = 0;
    /// Triangulates the models that take part in collision checking.
    virtual void CreateCollisionMdl() = 0;
    /// Every model with geometry that takes part in collision checking: fixed models, then link models.
    virtual std::vector<opencascade::handle<ShapeEntity>> GetSubCollisionParts() = 0;
    /// Moves mounted entities to their flanges.
    virtual void UpdateAssembleData() = 0;
    /// Writes the parameters of the mechanism into an object.
    virtual void ExportParaToJson(Json::Value& out) = 0;
    /// Resizes the current values to the number of joints.
    virtual void UpdateModelPara() = 0;

protected:
    /// Copies the links' own values into the current values.
    virtual void UpdateState() = 0;

public:
    /// A token that expires when the entity is destroyed; EntityPointer checks it.
    std::weak_ptr<const void> GetLife() const { return life; }
    /// Registers a callback for this entity's destruction, in which a holder drops its plain pointers to it.
    /// The callback may use the address alone. It is not called when the holder was destroyed first; a later
    /// call with the same holder replaces it.
    void TellAtEnd(const Entity& holder, std::function<void()> forget);

    /// Identity of the entity; 0 until it is set. The hash of a robot also identifies its system.
    std::uint64_t GetHashIndex() const { return hashIndex; }
    /// Sets the identity of the entity.
    void SetHashIndex(std::uint64_t hash) { hashIndex = hash; }
    /// Name of the entity, UTF-8.
    std::string GetName() const { return name; }
    /// Sets the name; models keep theirs until UpdateLinkModelNames.
    void SetName(const std::string& newName) { name = newName; }
    /// The root model, or null.
    opencascade::handle<ViewShape> GetRootMdl() const { return rootMdl; }
    /// The fixed models by hash key.
    const std::map<std::uint64_t, opencascade::handle<ViewShape>>& GetFixMdlMap() const { return fixMdls; }
    /// Hangs a model below the root model as a fixed part. @return its hash key: not 0, above those there
    /// are.
    std::uint64_t AddFixMdl(const opencascade::handle<ViewShape>& model);

    /// Fixed model by its hash key; null where there is none or it is no ShapeEntity.
    opencascade::handle<ShapeEntity> GetPart(size_t key) const;

    /// Whether the host is loading the entity's mesh; models must not be replaced meanwhile.
    bool IsLoadMeshModel() const { return loadingMesh; }
    /// Sets whether the host is loading the entity's mesh.
    void SetLoadMeshModel(bool loading) { loadingMesh = loading; }
    /// Replaces the closed shape that represents the entity's surface, mm. Stored for clearance checks;
    /// nothing reads it yet.
    /// @param withParts add the solids of the fixed models. @param mesh triangulate faces without triangles.
    /// @throws std::invalid_argument, with the old one kept, for a shape that is not closed.
    void UpdateWatertightMeshModel(const TopoDS_Shape& shape, bool withParts, bool mesh);
    /// The closed surface set by UpdateWatertightMeshModel, or a null shape.
    const TopoDS_Shape& GetWatertightMeshModel() const { return watertightMesh; }

    /// Sets the distance (mm) below which a clearance check is to report contact; nothing reads it yet.
    void SetCheckCollisionGap(double gap) { checkCollisionGap = gap; }
    /// Distance (mm) that SetCheckCollisionGap stored; 0 at first.
    double GetCheckCollisionGap() const { return checkCollisionGap; }
    /// Placement of the entity in the world.
    const gp_Trsf& GetRootMdlTrsf() const { return rootTrsf; }

protected:
    /// Identity of the entity.
    std::uint64_t hashIndex = 0;
    /// Name, UTF-8.
    std::string name;
    /// Root model, or null.
    opencascade::handle<ViewShape> rootMdl;
    /// Fixed models by hash key.
    std::map<std::uint64_t, opencascade::handle<ViewShape>> fixMdls;
    /// Whether a painting tool's spray cone is shown.
    bool paintIsShown = false;
    /// Placement of the entity in the world, mm.
    gp_Trsf rootTrsf;

private:
    struct Holder {
        std::weak_ptr<const void> life;
        std::function<void()> forget;
    };

    std::shared_ptr<const void> life = std::make_shared<char>();
    std::map<const Entity*, Holder> holders;
    double checkCollisionGap = 0;
    bool loadingMesh = false;
    TopoDS_Shape watertightMesh;
};
