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
    int code = 8;
};

/// A shape in the 3D view. It knows whether it is displayed, how, and what may be selected on it, also
/// where there is no view; where a context is attached (ViewContext, or the one it already lives in) every
/// change is forwarded to it. Used from the view's thread alone.
class BaseViewShape : public AIS_ColoredShape {
    DEFINE_STANDARD_RTTIEXT(BaseViewShape, AIS_ColoredShape)

public:
    explicit BaseViewShape(const TopoDS_Shape& shape);

    /// Shows the shape in its present display mode, with selection as it is set.
    void Display();
    /// Shows the shape and all that hangs below it. @param mode 0 wireframe, 1 shaded. @param selectionMode
    /// the one mode to activate, or -1 to leave selection as it is.
    void Display(int mode, int selectionMode);
    /// Takes the shape, and all that hangs below it, out of sight; the view keeps it for a later
    /// RedisplayShape or Display.
    void Hide() const;
    /// Takes the shape, and all that hangs below it, out of the context altogether.
    void RemoveFromView() const;
    bool IsDisplayed() const { return displayed; }

    /// Recomputes the presentation after a change and shows a shape that was hidden.
    /// @param bringIn also show a shape that the view does not know (never displayed, or removed); without it
    /// such a shape is left alone. @param updateViewer redraw at once.
    void RedisplayShape(bool bringIn, bool updateViewer) const;
    /// @param mode 0 wireframe, 1 shaded.
    void SetDispalyMode(int mode);
    int GetDisplayMode() const { return displayMode; }

    /// Switches one selection mode on or off; mode -1 with off switches all of them off, with on restores the
    /// whole-shape mode 0.
    void SetSelectionMode(int mode, bool on);
    const std::set<int>& GetSelectionModes() const { return selectionModes; }
    /// True takes the shape out of the selection and keeps it unselectable until called with false.
    void SetUnSelected(bool unselected);
    bool IsUnSelected() const { return unselectable; }

    /// Replaces the shape. Colour and transparency of the whole stay, those of parts go with them.
    void SetShape(const TopoDS_Shape& shape);

    /// Gives a part of the shape its own colour and transparency.
    void SetShapeLayer(const TopoDS_Shape& part, const ColorLayer& layer);
    /// Gives the whole shape a colour and transparency.
    void SetShapeColorLayer(const ColorLayer& layer);
    /// What SetShapeLayer (part) and SetShapeColorLayer (the shape itself) were told, one for each part, in
    /// the order in which the parts got their first.
    const std::vector<std::pair<TopoDS_Shape, ColorLayer>>& GetLayers() const { return layers; }

    /// Takes off everything that hangs below this shape.
    void RemoveAllChild();

    /// Moves the geometry within the shape's own frame, custom colours with it; the placement stays.
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
    /// The shape was replaced, or moved within its own frame.
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
