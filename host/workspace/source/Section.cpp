#include "Outline.h"
#include "Polygon.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace WorkSpace {

namespace {

// Fractions of the reach, together well below the promised 1 %: width of a raster cell, length of a piece of
// a line, deviation allowed between wrist samples, and deviation allowed by simplifying.
constexpr double CellShare = 0.002;
constexpr double StepShare = 0.04;
constexpr double WristShare = 0.0025;
constexpr double SimplifyShare = 0.0015;
/// Lines of neighbouring wrist samples may end this far apart, about the deviation allowed between samples.
constexpr int BridgedCells = 1;
/// Number of wrist samples of a first pass; lines inside the area that it marks are skipped in the second
/// pass.
constexpr std::size_t FirstLook = 100;
constexpr double RoughCellShare = 2 * CellShare;

constexpr double SmallestReach = 1.0; // mm

} // namespace

std::vector<std::vector<double>> GetRobotWorkSpace(const Robot& robot) {
    const Arm arm(robot);
    const Vec shoulder = arm.Shoulder();
    const double length = arm.StretchedLength();
    const double reach = std::hypot(std::abs(shoulder.x) + length, shoulder.y);
    if (!(length > SmallestReach)) {
        throw std::invalid_argument("WorkSpace: the tool centre stays at the shoulder");
    }
    const auto cells = [&](double share) {
        return Raster(share * reach, std::hypot(reach, length), shoulder.z - length, shoulder.z + length);
    };
    Raster raster = cells(CellShare);
    ArmSweep sweep(arm, StepShare * reach);
    const WristNet wrist(arm, WristShare * reach);
    Raster rough = cells(RoughCellShare);
    for (const Vec& tool : wrist.Some(FirstLook)) {
        sweep.MarkOutline(tool, nullptr, rough);
    }
    rough.Fill(0);
    rough.MeasureDepth();
    wrist.ForEach([&](const Vec& tool) { sweep.MarkOutline(tool, &rough, raster); });
    sweep.MarkWristLines(wrist, &rough, raster);
    raster.Fill(BridgedCells);
    Polygon boundary = TraceBoundary(raster);
    // A point within half a cell of the axis is put on it: a gap there would become a thin cone when
    // revolved.
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
