#pragma once

#include <host/view/ViewShape.h>

/// A view shape that belongs to an entity: a link's body, a fixed part, or the entity's root.
class ShapeEntity : public ViewShape {
    DEFINE_STANDARD_RTTIEXT(ShapeEntity, ViewShape)

public:
    ShapeEntity(const TopoDS_Shape& shape, Uuid id);

    /// Places the shape (and what hangs below it) in the world, wherever the shape hangs itself.
    /// @param refresh redisplay at once where the shape is displayed.
    void SetTransformation(const gp_Trsf& trsf, bool refresh);
};
