#pragma once

#include <IMeshTools_Parameters.hxx>
#include <host/tools/Uuid.h>
#include <host/view/BaseViewShape.h>
#include <memory>
#include <mutex>
#include <string>

class Prs3d_Drawer;
class TriangleModel;

/// Name and identity of a shape in the scene tree, independent of those of the model that draws it.
struct PrimitiveProperty {
    std::string name; ///< UTF-8
    Uuid id;          ///< nil until it is set
};

/// A shape in the view that represents a part of the cell: it has an identity, a name, and settings for
/// collision checking.
class ViewShape : public BaseViewShape {
    DEFINE_STANDARD_RTTIEXT(ViewShape, BaseViewShape)

public:
    /// @param shape geometry in the object's own frame, mm; may be null. @param id identity; random if
    /// omitted.
    explicit ViewShape(const TopoDS_Shape& shape, Uuid id = Uuid::CreateUuid());
    ~ViewShape() override;

    /// Sets the identity of the model.
    void SetId(const Uuid& newId) { id = newId; }
    /// Identity of the model.
    const Uuid& GetId() const { return id; }
    /// Sets the name of the model, UTF-8.
    void SetName(const std::string& newName) { name = newName; }
    /// Name of the model, UTF-8.
    const std::string& GetName() const { return name; }

    /// Sets name and identity in the scene tree.
    void SetPrimitiveProperty(const std::string& primitiveName, const Uuid& primitiveId);
    /// Name and identity in the scene tree.
    const PrimitiveProperty& GetPrimitiveProperty() const { return primitive; }

    /// Key under which the owning entity stores the shape; 0 while it belongs to none.
    std::uint64_t GetHashKey() const { return hashKey; }
    /// Sets that key; called by the owning entity.
    void SetHashKey(std::uint64_t key) { hashKey = key; }
    /// A number that increases with every shape that is constructed: the order of creation.
    std::uint64_t GetSerial() const { return serial; }

    /// Discards the tree of triangles that distance queries search; the next query builds it anew. The tree
    /// is in the shape's own frame, so moving the shape costs no rebuild.
    /// @param keep do nothing where there is a tree, or another shape to build it from.
    void CreateBVHMdl(bool keep);
    /// The same; the tree is built from the triangles of the given shape instead of the displayed one.
    void CreateBVHMdl(const TopoDS_Shape& shape, bool keep);
    /// The tree of triangles, built now where there is none. May be called from several threads at once.
    std::shared_ptr<const TriangleModel> GetBVHMdl() const;

    /// Parameters for BRepMesh_IncrementalMesh.
    /// @param drawer its relative deflection is taken over where it sets one; may be null.
    /// @param angle largest angle (rad) between neighbouring triangles. @param deflection largest distance
    /// (mm) from the surface.
    static IMeshTools_Parameters GetMeshPara(const opencascade::handle<Prs3d_Drawer>& drawer, double angle,
                                             double deflection);

    /// Distance (mm) below which this part is to count as touched, added to the entity's collision gap.
    /// Stored for clearance checks; no distance query reads it yet.
    double collisionTolerance = 0;
    /// The same while a program is simulated; not read yet either.
    double simulationTolerance = 0;
    /// Whether the entity's collision models (Entity::GetCollisionFixMdls and such) include this part.
    bool takesPartInCollision = true;
    /// Whether "fit all" and scene extents count this part.
    bool countsForExtents = true;

private:
    Uuid id;
    std::string name;
    PrimitiveProperty primitive;
    std::uint64_t hashKey = 0;
    std::uint64_t serial;
    void OnGeometryChanged() override;

    mutable std::mutex trianglesLock;
    TopoDS_Shape triangleSource; ///< null for the displayed shape
    mutable std::shared_ptr<const TriangleModel> triangles;
};
