#include "Outline.h"
#include "Polygon.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace WorkSpace {

namespace {

// Shares of the reach, together well within the promised 1 %: width of a cell, length of a piece of a line,
// what the spread of the wrist may cut off, and what simplifying may.
constexpr double CellShare = 0.002;
constexpr double StepShare = 0.04;
constexpr double WristShare = 0.0025;
constexpr double SimplifyShare = 0.0015;
/// Lines of neighbouring wrists may end this far apart, about what their spread may cut off.
constexpr int BridgedCells = 1;
/// A first look takes this many wrists; what it finds inside saves most of the lines of the others.
constexpr std::size_t FirstLook = 100;
constexpr double FirstCellShare = 2 * CellShare;
/// Wrists nearer to each other than this draw the same lines, but for what the wrist's spread may cut off.
constexpr double ThinShare = 0.03;

constexpr double SmallestReach = 1.0; // mm

} // namespace

std::vector<std::vector<double>> GetRobotWorkSpace(const Robot& robot) {
    const Arm arm(robot);
    const Point3 shoulder = arm.Shoulder();
    const double length = arm.StretchedLength();
    const double reach = std::hypot(std::abs(shoulder.x) + length, shoulder.y);
    if (!(length > SmallestReach)) {
        throw std::invalid_argument("WorkSpace: the tool centre stays at the shoulder");
    }
    const auto cells = [&](double share) {
        return Raster(share * reach, std::hypot(reach, length), shoulder.z - length, shoulder.z + length);
    };
    Raster raster = cells(CellShare);
    Raster first = cells(FirstCellShare);
    ArmSweep sweep(arm, StepShare * reach);
    const WristNet wrist(arm, WristShare * reach);
    for (const Point3& tool : wrist.Some(FirstLook)) {
        sweep.MarkOutline(tool, nullptr, first);
        sweep.MarkOutline(tool, nullptr, raster);
    }
    first.Fill(0);
    first.MeasureDepth();
    for (const Point3& tool : wrist.Thinned(ThinShare * reach)) {
        sweep.MarkOutline(tool, &first, raster);
    }
    sweep.MarkWristLines(wrist, &first, raster);
    raster.Fill(BridgedCells);
    Polygon boundary = TraceBoundary(raster);
    // Half a cell from the axis is on it: a sliver there would become a needle of a cone when it is revolved.
    for (SectionPoint& point : boundary) {
        point.r = point.r < raster.CellWidth() ? 0 : point.r;
    }
    const Polygon outline = Simplified(boundary, SimplifyShare * reach);
    std::vector<std::vector<double>> profile;
    for (const SectionPoint& point : outline) {
        profile.push_back({point.r, point.z});
    }
    profile.push_back(profile.front());
    return profile;
}

} // namespace WorkSpace
