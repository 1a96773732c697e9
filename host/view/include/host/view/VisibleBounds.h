#pragma once

#include <Bnd_Box.hxx>
#include <host/view/ViewShape.h>

namespace ShapeHandle {

/// Tight axis-aligned box around a model at its placement; world frame, mm.
/// @param withChildren include the model's children.
/// @return a void box for a null model, or where there is no geometry.
Bnd_Box GetFullVisibleAABB(const opencascade::handle<ViewShape>& model, bool withChildren);

} // namespace ShapeHandle
