#include <BRepAlgoAPI_Cut.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <Bnd_Box.hxx>
#include <host/tools/ShapeHandle.h>
#include <host/view/VisibleBounds.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>

namespace {

/// Half-size (mm) of the cutting volumes, larger than any cell.
constexpr double Far = 100000.0;
/// Clearance beside what carries the robot, mm.
constexpr double Clearance = 100.0;
/// A first cut that leaves no more than this fraction of the box is discarded.
constexpr double LeastPart = 0.5;

Bnd_Box CarrierBounds(GenericEntity& carrier) {
    Bnd_Box bounds;
    for (const auto& model : carrier.GetFixMdls()) {
        bounds.Add(ShapeHandle::GetFullVisibleAABB(model, true));
    }
    return bounds;
}

TopoDS_Shape Slab(const gp_Pnt& low, const gp_Pnt& high, bool narrowX) {
    const gp_Vec room(narrowX ? Clearance : Far, narrowX ? Far : Clearance, Far);
    return BRepPrimAPI_MakeBox(low.Translated(-room), high.Translated(room)).Solid();
}

} // namespace

void RobotWorkspace::CutShape(TopoDS_Shape& shape) const {
    GenericEntity* carrier = robot->GetMountingEntity();
    const Bnd_Box bounds = carrier != nullptr ? CarrierBounds(*carrier) : Bnd_Box();
    if (bounds.IsVoid()) {
        return;
    }
    const gp_Pnt low = bounds.CornerMin();
    BRepAlgoAPI_Cut beside(shape, Slab(low, bounds.CornerMax(), narrowX));
    const bool done = beside.IsDone();
    if (done && ShapeHandle::CheckTopoDS(beside.Shape()) &&
        ShapeHandle::GetAreaOrVol(beside.Shape()) > LeastPart * ShapeHandle::GetAreaOrVol(shape)) {
        shape = beside.Shape();
    }
    const TopoDS_Shape floor =
        BRepPrimAPI_MakeBox(gp_Pnt(Far, Far, low.Z()), gp_Pnt(-Far, -Far, -Far)).Solid();
    BRepAlgoAPI_Cut above(shape, floor);
    // The second cut requires the first; without it the box stays as it was.
    if (done) {
        shape = above.Shape();
    }
}
