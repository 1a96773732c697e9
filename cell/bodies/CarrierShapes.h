#pragma once

#include <cell/bodies/Bodies.h>
#include <cell/documents/CarrierFile.h>

namespace cell {

/// What a rail, a positioner or a table looks like, in its own frame at zero. Descriptions carry no geometry,
/// so the bodies follow from where the axes and the flange are: a beam under what slides, a frame with a
/// tilting beam where an axis lies, a turntable where one stands. The floor is at height zero.
Bodies ShapeCarrier(const CarrierDescription& carrier);

} // namespace cell
