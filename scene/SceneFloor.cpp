#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <cell/bodies/Solids.h>
#include <cell/text/Text.h>
#include <cmath>
#include <scene/Scene.h>

namespace cell {

namespace {

constexpr double MajorGrid = 500; // mm
constexpr double MinorGrid = 100; // mm
constexpr double FloorThickness = 20;
/// Floor around the cell, as part of its size.
constexpr double FloorMargin = 0.24;

const Quantity_Color Ground(0.86, 0.875, 0.89, Quantity_TOC_sRGB);
const Quantity_Color GridMajor(0.56, 0.60, 0.65, Quantity_TOC_sRGB);
const Quantity_Color GridMinor(0.75, 0.775, 0.80, Quantity_TOC_sRGB);

struct FloorPlan {
    double xLow, xHigh, yLow, yHigh;

    FloorPlan(const Bnd_Box& around, double margin) {
        const gp_Pnt low = around.CornerMin();
        const gp_Pnt high = around.CornerMax();
        const auto down = [](double v) { return std::floor(v / MinorGrid) * MinorGrid; };
        const auto up = [](double v) { return std::ceil(v / MinorGrid) * MinorGrid; };
        xLow = down(low.X() - margin);
        xHigh = up(high.X() + margin);
        yLow = down(low.Y() - margin);
        yHigh = up(high.Y() + margin);
    }

    void AddLines(double spacing, bool skipMajor, Assembly& lines) const {
        const auto wanted = [&](double v) { return !skipMajor || std::fmod(v, MajorGrid) != 0; };
        for (double x = std::ceil(xLow / spacing) * spacing; x <= xHigh; x += spacing) {
            if (wanted(x)) {
                lines.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(x, yLow, Scene::LineLift),
                                                  gp_Pnt(x, yHigh, Scene::LineLift)));
            }
        }
        for (double y = std::ceil(yLow / spacing) * spacing; y <= yHigh; y += spacing) {
            if (wanted(y)) {
                lines.Add(BRepBuilderAPI_MakeEdge(gp_Pnt(xLow, y, Scene::LineLift),
                                                  gp_Pnt(xHigh, y, Scene::LineLift)));
            }
        }
    }
};

} // namespace

void Scene::ShowFloor() {
    Bnd_Box covered = extent;
    covered.Add(ground);
    const FloorPlan plan(covered, FloorMargin * Size());
    ShowSolid(
        BRepPrimAPI_MakeBox(gp_Pnt(plan.xLow, plan.yLow, -FloorThickness), gp_Pnt(plan.xHigh, plan.yHigh, 0))
            .Shape(),
        Ground, true);
    Assembly minor;
    plan.AddLines(MinorGrid, true, minor);
    ShowLines(minor.Shape(), GridMinor, 1.0, Aspect_TOL_SOLID);
    Assembly major;
    plan.AddLines(MajorGrid, false, major);
    ShowLines(major.Shape(), GridMajor, 1.6, Aspect_TOL_SOLID);
    ShowScale();
}

/// Labels the major lines at the two near edges of the floor, which are always in the picture.
void Scene::ShowScale() {
    const double nearY = extent.CornerMin().Y() - MinorGrid;
    const double nearX = extent.CornerMax().X() + MinorGrid;
    for (double x = std::ceil(extent.CornerMin().X() / MajorGrid) * MajorGrid; x < nearX; x += MajorGrid) {
        ShowText("X " + Rounded(x, 0) + " mm", gp_Pnt(x, nearY, LineLift), 14);
    }
    // The corner is labelled by the other edge, so that labels do not overlap.
    for (double y = std::ceil((nearY + MajorGrid / 2) / MajorGrid) * MajorGrid; y < extent.CornerMax().Y();
         y += MajorGrid) {
        ShowText("Y " + Rounded(y, 0) + " mm", gp_Pnt(nearX, y, LineLift), 14);
    }
}

} // namespace cell
