#pragma once

#include <host/tools/Uuid.h>
#include <host/view/BaseViewShape.h>
#include <string>

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

    /// Distance (mm) below which this part counts as touched, on top of the entity's collision gap.
    double collisionTolerance = 0;
    /// The same while a program is simulated.
    double simulationTolerance = 0;
    /// Whether collision checking looks at this part at all.
    bool takesPartInCollision = true;
    /// Whether "fit all" and scene extents count this part.
    bool countsForExtents = true;

private:
    Uuid id;
    std::string name;
};
