#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <algorithm>
#include <array>
#include <cell/bodies/Solids.h>
#include <scene/Scene.h>

namespace cell {

namespace {

/// Marks of key poses, as parts of the cell's size.
constexpr double MarkRadius = 0.0055;
/// How much of a tool is drawn along its path, and how far apart, as parts of the cell's size: closer tools
/// would cover the part.
constexpr double ToolLength = 0.05;
constexpr double ToolGap = 0.012;
constexpr double LineWidth = 0.004;
/// Names of poses nearer to each other than this part of the cell's size would run together; the first stays.
constexpr double LabelGap = 0.045;

const std::array<Quantity_Color, 4> PathColours = {
    Quantity_Color(0.05, 0.42, 0.80, Quantity_TOC_sRGB), Quantity_Color(0.85, 0.10, 0.35, Quantity_TOC_sRGB),
    Quantity_Color(0.02, 0.60, 0.40, Quantity_TOC_sRGB), Quantity_Color(0.50, 0.25, 0.75, Quantity_TOC_sRGB)};

} // namespace

void Scene::ShowPaths(const Cell& cell, const std::vector<PlannedMotion>& plan) {
    for (std::size_t i = 0; i < plan.size(); ++i) {
        ShowPath(plan[i], i);
    }
    for (std::size_t i = 0; i < cell.ToolPaths().size(); ++i) {
        const ToolPath& path = cell.ToolPaths()[i];
        ShowToolPath(WorkUp(path), *path.workpiece, i);
    }
}

void Scene::ShowPath(const PlannedMotion& planned, std::size_t number) {
    const Quantity_Color& colour = PathColours[number % PathColours.size()];
    BRepBuilderAPI_MakePolygon path;
    for (const gp_Pnt& point : planned.tcpPath) {
        path.Add(point);
        extent.Add(point);
    }
    if (path.IsDone()) {
        pathMarks.push_back(ShowLines(path.Shape(), colour, 4.0, Aspect_TOL_SOLID));
    }
    for (const KeyState& key : planned.motion->keys) {
        if (std::find(shownKeys.begin(), shownKeys.end(), key.name) == shownKeys.end()) {
            ShowKeyPose(key, colour);
            shownKeys.push_back(key.name);
        }
    }
}

void Scene::ShowToolPath(const WorkedPath& path, const Workpiece& workpiece, std::size_t number) {
    BRepBuilderAPI_MakePolygon line;
    Assembly tools;
    const double length = ToolLength * Size();
    gp_Pnt drawn; // where the last tool was drawn
    for (const auto& [x, y, z, dx, dy, dz] : path.poses) {
        const gp_Pnt point(x, y, z);
        const gp_Pnt from = point.Translated(gp_Vec(dx, dy, dz) * -length);
        // Lifted a little, or half of the line would lie inside the part.
        line.Add(point.Translated(gp_Vec(dx, dy, dz) * (-LineWidth * Size())));
        if (tools.IsEmpty() || point.Distance(drawn) >= ToolGap * Size()) {
            tools.Add(BRepBuilderAPI_MakeEdge(point, from).Shape());
            drawn = point;
        }
    }
    if (line.IsDone()) {
        const auto show = [&](const TopoDS_Shape& shape, std::size_t colour, double width) {
            const auto mark =
                ShowLines(shape, PathColours[colour % PathColours.size()], width, Aspect_TOL_SOLID);
            Attach(mark, workpiece);
            pathMarks.push_back(mark);
        };
        show(line.Shape(), number + 1, 4.0);
        show(tools.Shape(), number, 2.5);
    }
}

void Scene::SetPathsVisible(bool visible) {
    for (const auto& mark : pathMarks) {
        if (!visible) {
            viewer.Context()->Erase(mark, Standard_False);
        } else {
            viewer.Context()->Display(mark, mark->HasDisplayMode() ? mark->DisplayMode() : 0, -1,
                                      Standard_False);
        }
    }
}

/// A thin line down to the floor shows the pose's position in depth.
void Scene::ShowKeyPose(const KeyState& key, const Quantity_Color& colour) {
    const gp_Pnt place = key.state.GetLocEuler(0).location;
    const double radius = MarkRadius * Size();
    pathMarks.push_back(ShowSolid(Ball(place, radius), colour, false));
    const gp_Pnt below(place.X(), place.Y(), LineLift);
    extent.Add(below);
    if (place.Z() > radius) {
        pathMarks.push_back(
            ShowLines(BRepBuilderAPI_MakeEdge(place, below).Shape(), colour, 1.0, Aspect_TOL_DASH));
    }
    const auto isNear = [&](const gp_Pnt& other) { return place.Distance(other) < LabelGap * Size(); };
    if (std::none_of(labelled.begin(), labelled.end(), isNear)) {
        pathMarks.push_back(ShowText(key.name, place.Translated(gp_Vec(0, 0, 2.2 * radius)), 17));
        labelled.push_back(place);
    }
}

} // namespace cell
