#include <host/view/BaseViewShape.h>

#include <AIS_InteractiveContext.hxx>
#include <algorithm>
#include <gp_Trsf.hxx>
#include <host/view/ViewContext.h>

IMPLEMENT_STANDARD_RTTIEXT(BaseViewShape, AIS_ColoredShape)

namespace {

// The context takes handles to mutable objects, even where only the state of the view changes.
opencascade::handle<AIS_InteractiveObject> Mutable(const BaseViewShape* shape) {
    return const_cast<BaseViewShape*>(shape);
}

opencascade::handle<AIS_InteractiveContext> ContextOf(const BaseViewShape* shape) {
    if (shape->HasInteractiveContext()) {
        return shape->InteractiveContext();
    }
    return ViewContext::GetCurrent();
}

Quantity_Color ColourOf(const ColorLayer& layer) {
    return {layer.red, layer.green, layer.blue, Quantity_TOC_RGB};
}

} // namespace

BaseViewShape::BaseViewShape(const TopoDS_Shape& shape) : AIS_ColoredShape(shape) {
    SetDisplayMode(displayMode);
}

void BaseViewShape::Display() { Display(displayMode, -1); }

void BaseViewShape::Display(int mode, int selectionMode) {
    MarkDisplayed();
    SetDispalyMode(mode);
    if (selectionMode >= 0) {
        selectionModes = {selectionMode};
    }
    if (const auto context = ContextOf(this)) {
        context->Display(this, mode, -1, Standard_False);
        ForwardSelection();
    }
}

// Children are displayed with their parent.
void BaseViewShape::MarkDisplayed() const {
    displayed = true;
    known = true;
    ForEachChild([](const BaseViewShape& child) { child.MarkDisplayed(); });
}

void BaseViewShape::Hide() const {
    ForEachChild([](const BaseViewShape& child) { child.Hide(); });
    displayed = false;
    if (HasInteractiveContext()) {
        InteractiveContext()->Erase(Mutable(this), Standard_False);
        // A child that was displayed with its parent is known to the presentation, but not to the context.
        InteractiveContext()->MainPrsMgr()->Erase(Mutable(this), -1);
    }
}

void BaseViewShape::RemoveFromView() const {
    ForEachChild([](const BaseViewShape& child) { child.RemoveFromView(); });
    Hide();
    if (HasInteractiveContext()) {
        InteractiveContext()->Remove(Mutable(this), Standard_False);
    }
    known = false;
}

void BaseViewShape::RedisplayShape(bool bringIn, bool updateViewer) const {
    if (!known && !bringIn) {
        return;
    }
    MarkDisplayed();
    const auto context = ContextOf(this);
    if (context.IsNull()) {
        return;
    }
    if (!context->IsDisplayed(Mutable(this))) {
        context->Display(Mutable(this), displayMode, -1, Standard_False);
        ForwardSelection();
    }
    context->Redisplay(Mutable(this), updateViewer, Standard_True);
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

void BaseViewShape::SetShape(const TopoDS_Shape& shape) {
    std::erase_if(layers, [&](const auto& entry) {
        return !entry.first.IsEqual(Shape()) || CustomAspectsMap().IsBound(entry.first);
    });
    for (auto& [whole, layer] : layers) {
        whole = shape;
    }
    ClearCustomAspects();
    AIS_Shape::SetShape(shape);
    OnGeometryChanged();
}

void BaseViewShape::SetShapeLayer(const TopoDS_Shape& part, const ColorLayer& layer) {
    SetCustomColor(part, ColourOf(layer));
    SetCustomTransparency(part, layer.transparency);
    KeepLayer(part, layer);
}

void BaseViewShape::SetShapeColorLayer(const ColorLayer& layer) {
    SetColor(ColourOf(layer));
    SetTransparency(layer.transparency);
    KeepLayer(Shape(), layer);
}

void BaseViewShape::KeepLayer(const TopoDS_Shape& part, const ColorLayer& layer) {
    const auto kept = std::find_if(layers.begin(), layers.end(),
                                   [&](const auto& entry) { return entry.first.IsEqual(part); });
    if (kept == layers.end()) {
        layers.emplace_back(part, layer);
    } else {
        kept->second = layer;
    }
}

void BaseViewShape::RemoveAllChild() {
    const PrsMgr_ListOfPresentableObjects children = Children();
    for (const auto& child : children) {
        RemoveChild(child);
    }
}

void BaseViewShape::MoveGeometry(const gp_Trsf& motion) {
    // One location instead of a growing chain of them, however often the geometry is moved; parts keep theirs
    // within the shape, so that they are still found in it.
    const TopLoc_Location from = Shape().IsNull() ? TopLoc_Location() : Shape().Location();
    const TopLoc_Location to(motion * from.Transformation());
    const auto moved = [&](const TopoDS_Shape& shape) {
        return shape.Located(to * (from.Inverted() * shape.Location()));
    };
    AIS_DataMapOfShapeDrawer aspects;
    for (AIS_DataMapOfShapeDrawer::Iterator it(CustomAspectsMap()); it.More(); it.Next()) {
        aspects.Bind(moved(it.Key()), it.Value());
    }
    ChangeCustomAspectsMap() = aspects;
    for (auto& [part, layer] : layers) {
        part = part.IsNull() ? part : moved(part);
    }
    if (!Shape().IsNull()) {
        AIS_Shape::SetShape(moved(Shape()));
        SetToUpdate();
        OnGeometryChanged();
    }
}
