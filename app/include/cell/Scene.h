#pragma once

#include <Bnd_Box.hxx>
#include <cell/Planner.h>
#include <cell/Viewer.h>
#include <vector>

namespace cell {

/// Puts the cell into the viewer as it stands now: bodies, what they stand on, tools, the paths of the tool
/// centres with their key poses, and a floor with a grid in millimetres.
class Scene {
public:
    /// How far (mm) lines lie above the floor so that the two do not flicker into each other.
    static constexpr double LineLift = 1.5;

    explicit Scene(Viewer& viewer_) : viewer(viewer_) {}

    void Show(GenericEntityConfig& entity);
    void ShowPath(const PlannedMotion& planned, std::size_t number);
    /// Last, since it takes its size from what was shown before.
    void ShowFloor();
    /// What the picture is of.
    const Bnd_Box& Extent() const { return extent; }

private:
    /// Diagonal of what is shown, mm; marks and margins are parts of it.
    double Size() const;
    void ShowBody(const opencascade::handle<ViewShape>& model);
    void ShowPlinth(RobotEntity& robot);
    void ShowNeck(const gp_Trsf& flange, const gp_Pnt& tip);
    void ShowToolCentre(const RobotEntity& robot);
    void ShowScale();
    void ShowKeyPose(const KeyState& key, const Quantity_Color& colour);
    void ShowSolid(const TopoDS_Shape& shape, const Quantity_Color& colour, bool matt);
    void ShowLines(const TopoDS_Shape& shape, const Quantity_Color& colour, double width,
                   Aspect_TypeOfLine type);
    void ShowText(const std::string& text, const gp_Pnt& place, double height);

    Viewer& viewer;
    Bnd_Box extent;
    std::vector<std::string> shownKeys;
};

} // namespace cell
