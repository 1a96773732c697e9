#include "../cell/Documents.h"

#include <algorithm>
#include <app/commands/Commands.h>
#include <cmath>
#include <limits>

using namespace cell;

namespace {

/// STEP files carry about twelve digits, and the kernel finds the intersection to 1e-7 mm.
constexpr double OnSurface = 1e-4; // mm
constexpr double UnitRounding = 1e-12;
constexpr double RunRadius = 120;
constexpr double BranchRadius = 75;

TEST(ToolPathTest, EdgePosesLieOnBothPipesWithTheToolBetweenThem) {
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

TEST(ToolPathTest, FileHoldsProcessedPosesInTheWorkpieceFrame) {
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
    EXPECT_EQ(ReadDocument(folder.path / "path.json")["frame"], "workpiece");
    const Json::Value written = ReadDocument(folder.path / "path.json")["poses"];
    ASSERT_EQ(written.size(), worked.poses.size());
    for (Json::ArrayIndex i = 0; i < written.size(); ++i) {
        const ToolPose& pose = worked.poses[i];
        EXPECT_NEAR(std::hypot(pose[0], pose[1]), BranchRadius, path.tolerance);
        EXPECT_GT(pose[2], RunRadius);
        for (Json::ArrayIndex k = 0; k < 6; ++k) {
            EXPECT_EQ(written[i][k].asDouble(), pose[k]);
        }
    }
}

TEST(ToolPathTest, PosesOffTheWorkpieceAreRemoved) {
    const Folder folder;
    Json::Value json = ExampleCell("seam.json");
    Json::Value& motion = json["motions"][0];
    motion.removeMember("edge");
    motion["poses"] = Parsed("[[-200, 0, 240, 0, 0, -1], [-160, 0, 240, 0, 0, -2], [-120, 0, 240, 0, 0, -1],"
                             " [-80, 0, 250, 0, 0, -1]]");
    const Cell cell = Cell::Load(folder.WriteJson("cell.json", json));
    const WorkedPath worked = WorkUp(cell.ToolPaths().front());
    EXPECT_GT(worked.poses.size(), 3U);
    EXPECT_LT(worked.poses.size(), worked.thinned);
    for (const ToolPose& pose : worked.poses) {
        EXPECT_LE(pose[2], 2 * RunRadius + cell.ToolPaths().front().tolerance);
    }
}

TEST(ToolPathTest, ClosedSeamHasNoGapAtAnySpacing) {
    struct Case {
        double spacing, smooth;
        int keepEvery;
    };
    for (const auto& [spacing, smooth, keepEvery] :
         {Case{8, 4, 2}, {8, 1, 2}, {8, 20, 1}, {25, 1.5, 7}, {1, 1, 1}, {0.5, 1, 3}}) {
        SCOPED_TRACE(testing::Message() << spacing << " mm apart, smoothed to " << smooth);
        Json::Value json = ExampleCell("seam.json");
        json["motions"][0]["spacing_mm"] = spacing;
        json["motions"][0]["smooth_mm"] = smooth;
        json["motions"][0]["keep_every"] = keepEvery;
        const Folder folder;
        const Cell cell = Cell::Load(folder.WriteJson("cell.json", json));
        const std::vector<ToolPose> poses = WorkUp(cell.ToolPaths().front()).poses;
        const auto apart = [](const ToolPose& a, const ToolPose& b) {
            return std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
        };
        EXPECT_LT(apart(poses.front(), poses.back()), OnSurface);
        for (std::size_t i = 1; i < poses.size(); ++i) {
            ASSERT_LE(apart(poses[i - 1], poses[i]), (keepEvery + 1) * std::max(spacing, smooth)) << i;
        }
    }
}

TEST(ToolPathTest, PosesAtAStateFollowThePositioner) {
    Json::Value json = ExampleCell("rail_and_positioner.json");
    json["motions"].append(Parsed(R"({"name": "ring", "kind": "tool_path", "workpiece": "flanged_pipe",
        "edge": 15, "spacing_mm": 4, "smooth_mm": 4, "keep_every": 1, "tolerance_mm": 0.5})"));
    const Folder folder;
    const auto file = folder.WriteJson("cell.json", json);
    const Cell cell = Cell::Load(file);
    // The key states were taught on the seam, independently of the path.
    const gp_Pnt taught = cell.FindKeyState("seam_start")->state.GetLocEuler(0).location;
    const auto distanceAt = [&](const std::string& state) {
        std::ostringstream out;
        WritePath({file, "ring", folder.path / "ring.json", false, state}, out);
        const Json::Value written = ReadDocument(folder.path / "ring.json");
        EXPECT_EQ(written["frame"], "world");
        double least = std::numeric_limits<double>::max();
        for (const Json::Value& pose : written["poses"]) {
            const gp_Pnt point(pose[0].asDouble(), pose[1].asDouble(), pose[2].asDouble());
            least = std::min(least, taught.Distance(point));
        }
        return least;
    };
    EXPECT_LT(distanceAt("seam_start"), 2.1) << "poses are 4 mm apart";
    EXPECT_LT(distanceAt("seam_end"), 2.1);
    EXPECT_GT(distanceAt("home"), 10);
    EXPECT_THAT(Thrown([&] { distanceAt("nobody"); }),
                testing::HasSubstr("--state: nobody, expected the name"));
}

} // namespace
