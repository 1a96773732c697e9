#pragma once

#include <Quantity_Color.hxx>
#include <TopoDS_Shape.hxx>
#include <host/tools/Rigid.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <vector>

namespace cell {

/// A solid and how it looks.
struct Body {
    TopoDS_Shape shape;
    Quantity_Color colour;
    /// Ignored when the camera is fitted to the picture, such as a long track.
    bool background = false;
};

/// What a mechanism looks like, in its own frame at zero.
struct Bodies {
    std::vector<Body> base;               ///< what stands still
    std::vector<std::vector<Body>> links; ///< what each joint moves
};

/// @param linkInEntity frame of the link that the body hangs on, at zero.
opencascade::handle<ShapeEntity> MakeModel(const Body& body, const Rigid& linkInEntity);

/// Gives the structure its root model and hangs the fixed bodies below it.
void AddBase(const std::vector<Body>& bodies, GenericEntityConfig& structure);

} // namespace cell
