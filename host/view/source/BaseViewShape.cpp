#include <host/view/BaseViewShape.h>

#include <AIS_InteractiveContext.hxx>
#include <gp_Trsf.hxx>
#include <host/view/ViewContext.h>

IMPLEMENT_STANDARD_RTTIEXT(BaseViewShape, AIS_ColoredShape)

namespace {

// The context speaks of handles to mutable objects, also where only the view's state changes.
opencascade::handle<AIS_InteractiveObject> Mutable(const BaseViewShape* shape) {
    return const_cast<BaseViewShape*>(shape);
}

opencascade::handle<AIS_InteractiveContext> ContextOf(const BaseViewShape* shape) {
    if (shape->HasInteractiveContext()) {
        return shape->InteractiveContext();
    }
    return ViewContext::GetCurrent();
}

} // namespace

BaseViewShape::BaseViewShape(const TopoDS_Shape& shape) : AIS_ColoredShape(shape) {
    SetDisplayMode(displayMode);
}

void BaseViewShape::Display() { Display(displayMode, -1); }

void BaseViewShape::Display(int mode, int selectionMode) {
    displayed = true;
    SetDispalyMode(mode);
    if (selectionMode >= 0) {
        selectionModes = {selectionMode};
    }
    if (const auto context = ContextOf(this)) {
        context->Display(this, mode, -1, Standard_False);
        ForwardSelection();
    }
}

void BaseViewShape::Hide() const {
    displayed = false;
    if (HasInteractiveContext()) {
        InteractiveContext()->Erase(Mutable(this), Standard_False);
    }
}

void BaseViewShape::RemoveFromView() const {
    displayed = false;
    if (HasInteractiveContext()) {
        InteractiveContext()->Remove(Mutable(this), Standard_False);
    }
}

void BaseViewShape::RedisplayShape(bool allModes, bool updateViewer) const {
    if (displayed && HasInteractiveContext()) {
        InteractiveContext()->Redisplay(Mutable(this), updateViewer, allModes);
    }
}

void BaseViewShape::SetDispalyMode(int mode) {
    displayMode = mode;
    SetDisplayMode(mode);
    if (displayed && HasInteractiveContext()) {
        InteractiveContext()->SetDisplayMode(this, mode, Standard_False);
    }
}

void BaseViewShape::SetSelectionMode(int mode, bool on) {
    if (mode < 0) {
        selectionModes = on ? std::set<int>{0} : std::set<int>{};
    } else if (on) {
        selectionModes.insert(mode);
    } else {
        selectionModes.erase(mode);
    }
    ForwardSelection();
}

void BaseViewShape::SetUnSelected(bool unselected) {
    unselectable = unselected;
    if (unselected && HasInteractiveContext() && InteractiveContext()->IsSelected(this)) {
        InteractiveContext()->AddOrRemoveSelected(this, Standard_False);
    }
    ForwardSelection();
}

void BaseViewShape::ForwardSelection() const {
    if (!displayed || !HasInteractiveContext()) {
        return;
    }
    AIS_InteractiveContext* const context = InteractiveContext();
    context->Deactivate(Mutable(this));
    if (!unselectable) {
        for (const int mode : selectionModes) {
            context->Activate(Mutable(this), mode);
        }
    }
}

void BaseViewShape::MoveGeometry(const gp_Trsf& motion) {
    // One location instead of a growing chain of them, however often the geometry is moved.
    const auto moved = [&](const TopoDS_Shape& shape) {
        return shape.Located(TopLoc_Location(motion * shape.Location().Transformation()));
    };
    AIS_DataMapOfShapeDrawer aspects;
    for (AIS_DataMapOfShapeDrawer::Iterator it(CustomAspectsMap()); it.More(); it.Next()) {
        aspects.Bind(moved(it.Key()), it.Value());
    }
    ChangeCustomAspectsMap() = aspects;
    if (!Shape().IsNull()) {
        SetShape(moved(Shape()));
        SetToUpdate();
    }
}
