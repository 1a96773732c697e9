#include <host/view/VisibleBounds.h>

#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_Transform.hxx>

namespace {

void AddBounds(const AIS_Shape& model, bool withChildren, Bnd_Box& bounds) {
    if (!model.Shape().IsNull()) {
        // The shape is moved to its placement before the box is computed: rotating a box would enlarge it.
        const TopoDS_Shape placed = BRepBuilderAPI_Transform(model.Shape(), model.Transformation()).Shape();
        BRepBndLib::AddOptimal(placed, bounds, Standard_False, Standard_False);
    }
    for (PrsMgr_ListOfPresentableObjects::Iterator it(model.Children()); withChildren && it.More();
         it.Next()) {
        if (const auto child = opencascade::handle<AIS_Shape>::DownCast(it.Value()); !child.IsNull()) {
            AddBounds(*child, withChildren, bounds);
        }
    }
}

} // namespace

Bnd_Box ShapeHandle::GetFullVisibleAABB(const opencascade::handle<ViewShape>& model, bool withChildren) {
    Bnd_Box bounds;
    if (!model.IsNull()) {
        AddBounds(*model, withChildren, bounds);
    }
    return bounds;
}
