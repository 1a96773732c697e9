#pragma once

#include <AIS_ColoredShape.hxx>
#include <set>
#include <vector>

class gp_Trsf;

/// Colour of a shape or of one layer of it.
struct ColorLayer {
    double red = 0;          ///< 0 to 1
    double green = 0;        ///< 0 to 1
    double blue = 0;         ///< 0 to 1
    double transparency = 0; ///< 0 opaque to 1 invisible
    int code = 8;            ///< the host's own code of the layer
};

/// A shape in the 3D view. It records whether it is displayed, how, and what may be selected on it, with or
/// without a view; where a context is attached (ViewContext, or the one that already displays it) every
/// change is forwarded to it. To be used from the view's thread alone.
class BaseViewShape : public AIS_ColoredShape {
    DEFINE_STANDARD_RTTIEXT(BaseViewShape, AIS_ColoredShape)

public:
    /// @param shape geometry in the object's own frame, mm; may be null.
    explicit BaseViewShape(const TopoDS_Shape& shape);

    /// Shows the shape in its present display mode, with selection as it is set.
    void Display();
    /// Shows the shape and its children.
    /// @param mode 0 wireframe, 1 shaded.
    /// @param selectionMode the one mode to activate, or -1 to leave selection as it is.
    void Display(int mode, int selectionMode);
    /// Hides the shape and its children; the view keeps them for a later RedisplayShape or Display.
    void Hide() const;
    /// Removes the shape and its children from the context.
    void RemoveFromView() const;
    /// Whether the shape is displayed: shown, and neither hidden nor removed since.
    bool IsDisplayed() const { return displayed; }

    /// Recomputes the presentation after a change and shows a shape that was hidden.
    /// @param bringIn also show a shape that was never displayed or was removed; without it such a shape is
    /// left as it is.
    /// @param updateViewer redraw at once.
    void RedisplayShape(bool bringIn, bool updateViewer) const;
    /// Sets how the shape is drawn. @param mode 0 wireframe, 1 shaded.
    void SetDispalyMode(int mode);
    /// 0 wireframe, 1 shaded.
    int GetDisplayMode() const { return displayMode; }

    /// Switches one selection mode on or off; mode -1 with off switches all of them off, with on restores the
    /// whole-shape mode 0.
    void SetSelectionMode(int mode, bool on);
    /// The selection modes that are switched on.
    const std::set<int>& GetSelectionModes() const { return selectionModes; }
    /// True removes the shape from the selection and makes it unselectable until called with false.
    void SetUnSelected(bool unselected);
    /// Whether the shape is unselectable.
    bool IsUnSelected() const { return unselectable; }

    /// Replaces the shape. Colour and transparency of the whole are kept, those of parts are dropped.
    void SetShape(const TopoDS_Shape& shape);

    /// Gives a part of the shape its own colour and transparency.
    void SetShapeLayer(const TopoDS_Shape& part, const ColorLayer& layer);
    /// Gives the whole shape a colour and transparency.
    void SetShapeColorLayer(const ColorLayer& layer);
    /// The layers set by SetShapeLayer (for a part) and SetShapeColorLayer (for the shape itself): the latest
    /// of each part, in the order in which the parts got their first.
    const std::vector<std::pair<TopoDS_Shape, ColorLayer>>& GetLayers() const { return layers; }

    /// Detaches all children from this shape.
    void RemoveAllChild();

    /// Moves the geometry, with custom colours, within the shape's own frame (mm); the placement stays.
    void MoveGeometry(const gp_Trsf& motion);

private:
    template <class Action>
    void ForEachChild(Action action) const {
        for (const auto& child : Children()) {
            if (const auto shape = opencascade::handle<BaseViewShape>::DownCast(child)) {
                action(*shape);
            }
        }
    }
    /// Called after the shape was replaced, or moved within its own frame.
    virtual void OnGeometryChanged() {}
    void KeepLayer(const TopoDS_Shape& part, const ColorLayer& layer);
    void MarkDisplayed() const;
    void ForwardSelection() const;

    mutable bool displayed = false;
    mutable bool known = false; // displayed before, and not removed since
    bool unselectable = false;
    int displayMode = 1;
    std::set<int> selectionModes{0};
    std::vector<std::pair<TopoDS_Shape, ColorLayer>> layers;
};
