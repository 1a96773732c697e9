#pragma once

#include <cell/bodies/Bodies.h>
#include <cell/documents/ArmFile.h>

namespace cell {

/// What an arm looks like, in the robot's frame at zero. Descriptions carry no geometry, so the bodies follow
/// from where the joints are: tubes between them, drums on their axes.
Bodies ShapeArm(const ArmDescription& arm);

} // namespace cell
