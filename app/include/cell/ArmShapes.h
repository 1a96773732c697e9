#pragma once

#include <Quantity_Color.hxx>
#include <TopoDS_Shape.hxx>
#include <cell/ArmFile.h>
#include <vector>

namespace cell {

/// A solid and how it looks.
struct Body {
    TopoDS_Shape shape;
    Quantity_Color colour;
};

/// What an arm looks like, in the robot's frame at zero. Descriptions carry no geometry, so the bodies follow
/// from where the joints are: tubes between them, drums on their axes.
struct ArmBodies {
    std::vector<Body> base;               ///< what stands still
    std::vector<std::vector<Body>> links; ///< what each joint moves
};

ArmBodies ShapeArm(const ArmDescription& arm);

} // namespace cell
