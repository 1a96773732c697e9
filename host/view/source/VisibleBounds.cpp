#include <host/view/VisibleBounds.h>

#include <BRepBndLib.hxx>

namespace {

void AddBounds(const AIS_Shape& model, bool withChildren, Bnd_Box& bounds) {
    if (!model.Shape().IsNull()) {
        Bnd_Box own;
        BRepBndLib::AddOptimal(model.Shape(), own, Standard_False, Standard_False);
        if (!own.IsVoid()) {
            bounds.Add(own.Transformed(model.Transformation()));
        }
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
