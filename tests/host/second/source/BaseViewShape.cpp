#include <host/view/BaseViewShape.h>

#include <algorithm>
#include <gp_Trsf.hxx>

IMPLEMENT_STANDARD_RTTIEXT(BaseViewShape, AIS_ColoredShape)

// A shape knows how it would be shown; there is no view that would show it.

BaseViewShape::BaseViewShape(const TopoDS_Shape& shape) : AIS_ColoredShape(shape) {}

void BaseViewShape::Display() { MarkDisplayed(); }

void BaseViewShape::Display(int mode, int selectionMode) {
    MarkDisplayed();
    displayMode = mode;
    if (selectionMode >= 0) {
        selectionModes = {selectionMode};
    }
}

void BaseViewShape::MarkDisplayed() const {
    displayed = true;
    known = true;
    ForEachChild([](const BaseViewShape& child) { child.MarkDisplayed(); });
}

void BaseViewShape::Hide() const {
    displayed = false;
    ForEachChild([](const BaseViewShape& child) { child.Hide(); });
}

void BaseViewShape::RemoveFromView() const {
    displayed = false;
    known = false;
    ForEachChild([](const BaseViewShape& child) { child.RemoveFromView(); });
}

void BaseViewShape::RedisplayShape(bool bringIn, bool /*updateViewer*/) const {
    if (known || bringIn) {
        MarkDisplayed();
    }
}

void BaseViewShape::SetDispalyMode(int mode) { displayMode = mode; }

void BaseViewShape::SetSelectionMode(int mode, bool on) {
    if (mode < 0) {
        selectionModes.clear();
    }
    if (on) {
        selectionModes.insert(std::max(mode, 0));
    } else {
        selectionModes.erase(mode);
    }
}

void BaseViewShape::SetUnSelected(bool unselected) { unselectable = unselected; }

void BaseViewShape::SetShape(const TopoDS_Shape& shape) {
    std::erase_if(layers, [&](const auto& entry) { return !entry.first.IsEqual(Shape()); });
    for (auto& entry : layers) {
        entry.first = shape;
    }
    AIS_Shape::SetShape(shape);
    OnGeometryChanged();
}

void BaseViewShape::SetShapeLayer(const TopoDS_Shape& part, const ColorLayer& layer) {
    KeepLayer(part, layer);
}

void BaseViewShape::SetShapeColorLayer(const ColorLayer& layer) { KeepLayer(Shape(), layer); }

void BaseViewShape::KeepLayer(const TopoDS_Shape& part, const ColorLayer& layer) {
    for (auto& [told, kept] : layers) {
        if (told.IsEqual(part)) {
            kept = layer;
            return;
        }
    }
    layers.emplace_back(part, layer);
}

void BaseViewShape::RemoveAllChild() {
    while (!Children().IsEmpty()) {
        RemoveChild(Children().First());
    }
}

void BaseViewShape::MoveGeometry(const gp_Trsf& motion) {
    const TopLoc_Location from = Shape().IsNull() ? TopLoc_Location() : Shape().Location();
    const TopLoc_Location to(motion * from.Transformation());
    const auto move = [&](const TopoDS_Shape& shape) {
        return shape.IsNull() ? shape : shape.Located(to * (from.Inverted() * shape.Location()));
    };
    for (auto& entry : layers) {
        entry.first = move(entry.first);
    }
    AIS_Shape::SetShape(move(Shape()));
    OnGeometryChanged();
}
