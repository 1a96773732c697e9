#pragma once

#include <host/view/ViewShape.h>

/// A view shape that belongs to an entity: a link's body, a fixed part, or the entity's root.
class ShapeEntity : public ViewShape {
    DEFINE_STANDARD_RTTIEXT(ShapeEntity, ViewShape)

public:
    /// @param shape geometry in the model's own frame, mm. @param id identity of the model.
    ShapeEntity(const TopoDS_Shape& shape, Uuid id);

    /// Places the shape, with its children, in the world (mm), whatever its own parent is.
    /// @param refresh redisplay at once where the shape is displayed.
    void SetTransformation(const gp_Trsf& trsf, bool refresh);
};
