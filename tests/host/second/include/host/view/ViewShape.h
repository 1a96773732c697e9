#pragma once

#include <IMeshTools_Parameters.hxx>
#include <host/tools/Uuid.h>
#include <host/view/BaseViewShape.h>
#include <string>

class Prs3d_Drawer;

/// What a shape is as an object of the scene tree, independent of the model that draws it.
struct PrimitiveProperty {
    std::string name;
    Uuid id;
};

/// A shape in the view that stands for a part of the cell: it has an identity, a name and its place in
/// collision checking.
class ViewShape : public BaseViewShape {
    DEFINE_STANDARD_RTTIEXT(ViewShape, BaseViewShape)

public:
    explicit ViewShape(const TopoDS_Shape& shape, Uuid id = Uuid::CreateUuid());

    void SetId(const Uuid& newId) { id = newId; }
    const Uuid& GetId() const { return id; }
    void SetName(const std::string& newName) { name = newName; }
    const std::string& GetName() const { return name; }

    void SetPrimitiveProperty(const std::string& primitiveName, const Uuid& primitiveId);
    const PrimitiveProperty& GetPrimitiveProperty() const { return primitive; }

    /// Key under which the entity that owns the shape finds it again; 0 while it belongs to none.
    std::uint64_t GetHashKey() const { return hashKey; }
    void SetHashKey(std::uint64_t key) { hashKey = key; }
    /// Rises with every shape that is made: the order of creation.
    std::uint64_t GetSerial() const { return serial; }

    /// Distances are measured between exact shapes, so there is nothing to build: this forgets the stand-in
    /// of an earlier call. @param keep leave everything as it is where another shape stands in.
    void CreateBVHMdl(bool keep);
    /// Lets another shape stand in for the displayed one in distance queries, from now on.
    void CreateBVHMdl(const TopoDS_Shape& shape, bool keep);
    /// The shape that distances are measured to, in this shape's own frame.
    const TopoDS_Shape& GetMeasuredShape() const { return standIn.IsNull() ? Shape() : standIn; }

    /// Parameters for BRepMesh_IncrementalMesh.
    /// @param drawer its relative deflection is taken over where it sets one; may be null.
    /// @param angle largest angle (rad) between neighbouring triangles. @param deflection largest distance
    /// (mm) from the surface.
    static IMeshTools_Parameters GetMeshPara(const opencascade::handle<Prs3d_Drawer>& drawer, double angle,
                                             double deflection);

    /// Distance (mm) below which this part is to count as touched, on top of the entity's collision gap. Kept
    /// for clearance checks: no distance query reads it yet.
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
    TopoDS_Shape standIn; ///< null for the displayed shape
};
