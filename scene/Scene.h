#pragma once

#include <AIS_TextLabel.hxx>
#include <Bnd_Box.hxx>
#include <cell/Planner.h>
#include <cell/plan/Reach.h>
#include <scene/Viewer.h>
#include <vector>

namespace cell {

/// Puts the cell into the viewer as it stands now: bodies, what they stand on, tools, the paths of the tool
/// centres with their key poses, and a floor with a grid in millimetres.
class Scene {
public:
    /// How far (mm) lines lie above the floor so that the two do not flicker into each other.
    static constexpr double LineLift = 1.5;

    explicit Scene(Viewer& viewer_) : viewer(viewer_) {}

    void Show(const Cell& cell);
    void Show(GenericEntityConfig& entity);
    /// Shows where the tool centres are now, in place of where they were.
    /// @param withFrames with their axes.
    void ShowToolCentres(const std::vector<RobotEntity*>& robots, bool withFrames = true);
    /// Lets the picture take in where the cell's bodies stand now.
    void Include(const Cell& cell);
    /// Where the bodies of one mechanism stand now.
    static Bnd_Box ExtentOf(GenericEntityConfig& entity);
    /// A line of text in the picture's lower left corner, in place of the one before.
    void ShowCaption(const std::string& text);
    /// The way of the tool centre in every motion with its key poses, and every tool path.
    void ShowPaths(const Cell& cell, const std::vector<PlannedMotion>& plan);
    /// Brings tool paths and columns to where the mechanisms stand now that they belong to.
    void Follow();
    /// Takes the paths, key poses and tool paths out of sight, or brings them back.
    void SetPathsVisible(bool visible);
    /// Shows the frames of mechanisms, their links and flanges, and the tool centres where they are now, in
    /// place of those before, at a size that fits the subject of the picture.
    void ShowTriads(const Cell& cell, const Bnd_Box& subject);
    void HideTriads();
    /// The region that a robot reaches, translucent.
    void ShowEnvelope(const Reach& reach);
    /// The spheroid of a robot's longest reach, translucent.
    void ShowMaxReach(const Reach& reach);
    /// Last, since it takes its size from what was shown before.
    void ShowFloor();
    /// What the picture is of.
    const Bnd_Box& Extent() const { return extent; }

private:
    /// Diagonal of what is shown, mm; marks and margins are parts of it.
    double Size() const;
    void ShowBody(const opencascade::handle<ViewShape>& model);
    void ShowPlinth(RobotEntity& robot);
    void ShowColumn(RobotEntity& robot);
    /// @param frame of the box, in the world.
    static Bnd_Box BoxOf(const opencascade::handle<BaseViewShape>& model, const gp_Trsf& frame = gp_Trsf());
    void ShowNeck(const gp_Trsf& flange, const gp_Pnt& tip);
    void ShowToolCentre(const RobotEntity& robot, bool withFrame);
    void Include(const opencascade::handle<ViewShape>& model);
    void ShowPath(const PlannedMotion& planned, std::size_t number);
    /// The points of a tool path, and at each the way the tool comes from.
    void ShowToolPath(const WorkedPath& path, const Workpiece& workpiece, std::size_t number);
    /// Lets a shape that was made in a mechanism's frame move with it.
    void Attach(const opencascade::handle<BaseViewShape>& shape, const GenericEntityConfig& carrier);
    void ShowScale();
    void ShowKeyPose(const KeyState& key, const Quantity_Color& colour);
    opencascade::handle<BaseViewShape> ShowSolid(const TopoDS_Shape& shape, const Quantity_Color& colour,
                                                 bool matt);
    opencascade::handle<BaseViewShape> ShowLines(const TopoDS_Shape& shape, const Quantity_Color& colour,
                                                 double width, Aspect_TypeOfLine type);
    opencascade::handle<AIS_TextLabel> ShowText(const std::string& text, const gp_Pnt& place, double height);
    void ShowTriad(const gp_Trsf& frame, const std::string& name, int size);

    Viewer& viewer;
    Bnd_Box extent;
    Bnd_Box ground; ///< all that needs floor under it
    std::vector<opencascade::handle<BaseViewShape>> toolCentres;
    int tcpSize = 0;
    opencascade::handle<AIS_TextLabel> caption;
    std::vector<opencascade::handle<AIS_InteractiveObject>> pathMarks;
    std::vector<std::pair<opencascade::handle<BaseViewShape>, const GenericEntityConfig*>> attached;
    std::vector<opencascade::handle<AIS_InteractiveObject>> triads;
    std::vector<std::pair<opencascade::handle<AIS_TextLabel>, gp_Pnt>> triadNames;
    std::vector<std::string> shownKeys;
    std::vector<gp_Pnt> labelled;
};

} // namespace cell
