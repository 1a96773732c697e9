#pragma once

#include <Bnd_Box.hxx>
#include <host/view/ViewShape.h>

namespace ShapeHandle {

/// Axis-aligned box, in the world and in millimetres, around a model where it stands, as tight as the
/// geometry allows.
/// @param withChildren take in what hangs below the model.
/// @return a void box for a null model, or where there is no geometry.
Bnd_Box GetFullVisibleAABB(const opencascade::handle<ViewShape>& model, bool withChildren);

} // namespace ShapeHandle
