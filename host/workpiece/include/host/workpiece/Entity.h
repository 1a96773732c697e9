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

    /// Takes the entity, all its models with it, out of the view for good.
    virtual void Delete();
    /// Takes all models out of sight. @param system the robot system that asks: an entity that belongs to
    /// other systems alone stays in sight; 0 is any.
    virtual void Hide(size_t system);
    /// Common keys of every entity: "ID" (root model's identifier, empty without one), "HashID", "name".
    /// @param path reserved for entities that write a package; not used here.
    virtual Json::Value ToJson(const std::string& path);
    virtual void LoadFromJson(const Json::Value& json) = 0;
    virtual void SetEntityShape(const opencascade::handle<ViewShape>& shape) = 0;
    /// The model that stands for the entity; fixed models hang below it. Null takes it away.
    virtual void SetRootMdl(const opencascade::handle<ViewShape>& model);
    /// Placement of the entity in the world.
    virtual void SetRootMdlTrsf(const gp_Trsf& trsf) = 0;

protected:
    /// Sets the collision gap that this kind of entity wants.
    virtual void UpdateCollisionMdlState();

public:
    virtual ~Entity();
    /// As SetRootMdlTrsf. @param follow whether links, models and mounted entities move at once, or with the
    /// next forward kinematics.
    virtual void UpdateRootTrsf(const gp_Trsf& trsf, bool follow) = 0;
    virtual int EntityDof() const = 0;
    virtual bool IsInLimit(const std::vector<double>& values, size_t system, double margin) const = 0;
    virtual std::vector<std::pair<double, double>> GetLimit(size_t system, double margin) = 0;
    /// Moves the entity by a transform given in the world.
    virtual void TransformedBy(const gp_Trsf& trsf) = 0;
    virtual int GetDOF(size_t system) const = 0;
    virtual const std::vector<double>& GetCurrentValue(size_t system) const = 0;
    virtual void SetCurrentValue(const std::vector<double>& values, size_t system) = 0;
    virtual MechanismType GetMechanismType() = 0;
    virtual std::vector<opencascade::handle<ShapeEntity>> GetFixMdls() = 0;
    virtual std::vector<opencascade::handle<ShapeEntity>> GetCollisionFixMdls() = 0;
    virtual void UpdateLinkModelNames() = 0;
    virtual Json::Value DataToJson(const std::string& path) = 0;
    virtual void Initial() = 0;
    virtual void CreateCollisionMdl() = 0;
    virtual std::vector<opencascade::handle<ShapeEntity>> GetSubCollisionParts() = 0;
    virtual void UpdateAssembleData() = 0;
    virtual void ExportParaToJson(Json::Value& out) = 0;
    virtual void UpdateModelPara() = 0;

protected:
    virtual void UpdateState() = 0;

public:
    /// Expires when the entity ends: for those who point at it without owning it.
    std::weak_ptr<const void> GetLife() const { return life; }
    /// Has `forget` called when this entity ends, unless the holder ended before. An entity that keeps plain
    /// pointers to this one drops them there; only the address may still be used then. A later call of the
    /// same holder replaces the earlier one.
    void TellAtEnd(const Entity& holder, std::function<void()> forget);

    std::uint64_t GetHashIndex() const { return hashIndex; }
    void SetHashIndex(std::uint64_t hash) { hashIndex = hash; }
    std::string GetName() const { return name; }
    void SetName(const std::string& newName) { name = newName; }
    opencascade::handle<ViewShape> GetRootMdl() const { return rootMdl; }
    const std::map<std::uint64_t, opencascade::handle<ViewShape>>& GetFixMdlMap() const { return fixMdls; }
    /// Hangs a model below the root model as a fixed part. @return its hash key: not 0, above those there
    /// are.
    std::uint64_t AddFixMdl(const opencascade::handle<ViewShape>& model);

    /// Fixed model by the key it is kept under (its hash key), null where there is none.
    opencascade::handle<ShapeEntity> GetPart(size_t key) const;

    /// Whether the host is loading the entity's mesh just now; parts must not be exchanged meanwhile.
    bool IsLoadMeshModel() const { return loadingMesh; }
    void SetLoadMeshModel(bool loading) { loadingMesh = loading; }
    /// Replaces the closed shape that stands for the entity's surface. Kept for clearance checks; nothing
    /// reads it yet.
    /// @param withParts put the fixed models' solids with it. @param mesh triangulate what has no triangles
    /// yet.
    /// @throws std::invalid_argument, with the old one kept, for a shape that is not closed.
    void UpdateWatertightMeshModel(const TopoDS_Shape& shape, bool withParts, bool mesh);
    /// Null until there is one.
    const TopoDS_Shape& GetWatertightMeshModel() const { return watertightMesh; }

    /// Distance (mm) below which a clearance check is to report contact. Kept for it; nothing reads it yet.
    void SetCheckCollisionGap(double gap) { checkCollisionGap = gap; }
    double GetCheckCollisionGap() const { return checkCollisionGap; }
    /// Placement of the entity in the world.
    const gp_Trsf& GetRootMdlTrsf() const { return rootTrsf; }

protected:
    std::uint64_t hashIndex = 0;
    std::string name;
    opencascade::handle<ViewShape> rootMdl;
    std::map<std::uint64_t, opencascade::handle<ViewShape>> fixMdls;
    bool paintIsShown = false;
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
