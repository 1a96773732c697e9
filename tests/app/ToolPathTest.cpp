#include "../cell/Documents.h"

#include <app/commands/Commands.h>
#include <cmath>

using namespace cell;

namespace {

/// STEP files carry about twelve digits, and the kernel finds the intersection to 1e-7 mm.
constexpr double OnSurface = 1e-4; // mm
constexpr double UnitRounding = 1e-12;
constexpr double RunRadius = 120;
constexpr double BranchRadius = 75;
constexpr double TableHeight = 500;

TEST(ToolPathTest, EdgeIsSampledWhereThePipesMeetWithTheToolBetweenThem) {
    const Cell cell = Cell::Load(Example("cells/seam.json"));
    const ToolPath& path = cell.ToolPaths().front();
    ASSERT_GT(path.poses.size(), 15U);
    for (const auto& [x, y, z, dx, dy, dz] : path.poses) {
        EXPECT_NEAR(std::hypot(x, y), BranchRadius, OnSurface);
        EXPECT_NEAR(std::hypot(y, z - RunRadius), RunRadius, OnSurface);
        EXPECT_NEAR(std::hypot(dx, dy, dz), 1, UnitRounding);
        const double intoBranch = -(dx * x + dy * y) / BranchRadius;
        const double intoRun = -(dy * y + dz * (z - RunRadius)) / RunRadius;
        EXPECT_GT(intoBranch, 0);
        EXPECT_NEAR(intoBranch, intoRun, OnSurface) << "the tool leans towards one of the pipes";
    }
}

TEST(ToolPathTest, IsWorkedUpOnTheWorkpieceWhereItStandsAndWritten) {
    const Cell cell = Cell::Load(Example("cells/seam.json"));
    const ToolPath& path = cell.ToolPaths().front();
    const WorkedPath worked = WorkUp(path);
    EXPECT_EQ(worked.converted, path.poses.size());
    EXPECT_GE(worked.smoothed, 2 * worked.converted - 3) << "8 mm legs are divided into 4 mm ones";
    EXPECT_LE(worked.thinned, worked.smoothed / 2 + 2);
    ASSERT_EQ(worked.poses.size(), worked.thinned) << "the seam itself lies on the workpiece";
    const Folder folder;
    std::ostringstream out;
    WritePath({Example("cells/seam.json"), "saddle", folder.path / "path.json"}, out);
    EXPECT_THAT(out.str(), testing::HasSubstr("smoothed  " + std::to_string(worked.smoothed)));
    const Json::Value written = ReadDocument(folder.path / "path.json")["poses"];
    ASSERT_EQ(written.size(), worked.poses.size());
    for (Json::ArrayIndex i = 0; i < written.size(); ++i) {
        const ToolPose& pose = worked.poses[i];
        EXPECT_NEAR(std::hypot(pose[0], pose[1]), BranchRadius, path.tolerance);
        EXPECT_GT(pose[2], TableHeight + RunRadius);
        for (Json::ArrayIndex k = 0; k < 6; ++k) {
            EXPECT_EQ(written[i][k].asDouble(), pose[k]);
        }
    }
}

TEST(ToolPathTest, WhatIsOffTheWorkpieceIsTakenOut) {
    const Folder folder;
    Json::Value json = ExampleCell("seam.json");
    Json::Value& motion = json["motions"][0];
    motion.removeMember("edge");
    motion["poses"] = Parsed("[[-200, 0, 240, 0, 0, -1], [-160, 0, 240, 0, 0, -2], [-120, 0, 240, 0, 0, -1],"
                             " [-80, 0, 250, 0, 0, -1]]");
    const Cell cell = Cell::Load(folder.WriteJson("cell.json", json));
    const WorkedPath worked = WorkUp(cell.ToolPaths().back());
    EXPECT_GT(worked.poses.size(), 3U);
    EXPECT_LT(worked.poses.size(), worked.thinned);
    for (const ToolPose& pose : worked.poses) {
        EXPECT_LE(pose[2], TableHeight + 2 * RunRadius + cell.ToolPaths().back().tolerance);
    }
}

} // namespace
