#include "Faults.h"

#include <cell/Commands.h>
#include <cmath>
#include <gmock/gmock.h>

using namespace cell;

namespace {

/// STEP files carry about twelve digits, and the kernel finds the intersection to 1e-7 mm.
constexpr double OnSurface = 1e-4; // mm
constexpr double UnitRounding = 1e-12;
constexpr double RunRadius = 120;
constexpr double BranchRadius = 75;
constexpr double TableHeight = 500;

Json::Value GoodSeam() {
    Json::Value cell = ReadDocument(Example("cells/seam.json"));
    cell["mechanisms"][1]["file"] = Example("parts/branch_pipe.step").string();
    Json::Value poses = cell["motions"][0];
    poses["name"] = "line";
    for (const char* key : {"edge", "spacing_mm"}) {
        poses.removeMember(key);
    }
    poses["poses"] = Parse("[[-200, 0, 240, 0, 0, -1], [-160, 0, 240, 0, 0, -2], [-120, 0, 240, 0, 0, -1]]");
    cell["motions"].append(poses);
    return cell;
}

class BadToolPath : public testing::TestWithParam<Fault> {};

} // namespace

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

TEST(ToolPathTest, IsWorkedUpOnTheWorkpieceWhereItStands) {
    const Cell cell = Cell::Load(Example("cells/seam.json"));
    const ToolPath& path = cell.ToolPaths().front();
    const WorkedPath worked = WorkUp(path);
    EXPECT_EQ(worked.converted, path.poses.size());
    EXPECT_GE(worked.smoothed, 2 * worked.converted - 3) << "8 mm legs are divided into 4 mm ones";
    EXPECT_LE(worked.thinned, worked.smoothed / 2 + 2);
    ASSERT_EQ(worked.poses.size(), worked.thinned) << "the seam itself lies on the workpiece";
    for (const ToolPose& pose : worked.poses) {
        EXPECT_NEAR(std::hypot(pose[0], pose[1]), BranchRadius, path.tolerance);
        EXPECT_GT(pose[2], TableHeight + RunRadius);
    }
}

TEST(ToolPathTest, WhatIsOffTheWorkpieceIsTakenOut) {
    const Folder folder;
    Json::Value json = GoodSeam();
    json["motions"][1]["poses"].append(Parse("[-80, 0, 250, 0, 0, -1]"));
    const Cell cell = Cell::Load(folder.Write("cell.json", ToText(json)));
    const WorkedPath worked = WorkUp(cell.ToolPaths().back());
    EXPECT_GT(worked.poses.size(), 3U);
    EXPECT_LT(worked.poses.size(), worked.thinned);
    for (const ToolPose& pose : worked.poses) {
        EXPECT_LE(pose[2], TableHeight + 2 * RunRadius + cell.ToolPaths().back().tolerance);
    }
}

TEST(ToolPathTest, CommandWritesThePosesAndCountsThem) {
    const Folder folder;
    const PathRequest request{Example("cells/seam.json"), "saddle", folder.path / "path.json"};
    std::ostringstream out;
    WritePath(request, out);
    const Cell cell = Cell::Load(request.file);
    const WorkedPath worked = WorkUp(cell.ToolPaths().front());
    const Json::Value written = ReadDocument(request.target);
    ASSERT_EQ(written["poses"].size(), worked.poses.size());
    for (Json::ArrayIndex i = 0; i < written["poses"].size(); ++i) {
        for (Json::ArrayIndex k = 0; k < 6; ++k) {
            EXPECT_EQ(written["poses"][i][k].asDouble(), worked.poses[i][k]);
        }
    }
    EXPECT_THAT(out.str(), testing::HasSubstr("smoothed  " + std::to_string(worked.smoothed)));
    EXPECT_THROW(WritePath({request.file, "nobody", folder.path / "none.json"}, out), InputError);
    EXPECT_FALSE(std::filesystem::exists(folder.path / "none.json"));
}

TEST_P(BadToolPath, IsReportedWithItsPlace) {
    const Folder folder;
    Json::Value json = GoodSeam();
    Apply(GetParam(), json);
    EXPECT_THAT(ReportOf(folder.Write("cell.json", ToText(json))),
                testing::AllOf(testing::HasSubstr(std::string(GetParam().path).substr(1) + ": "),
                               testing::HasSubstr(GetParam().expected), testing::HasSubstr(", expected ")));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, BadToolPath,
    testing::Values(
        Fault{"Workpiece", ".motions[0].workpiece", "\"table\"", "the name of a workpiece"},
        Fault{"EdgeAbsent", ".motions[0].edge", "99", "99, expected the number of an edge, from 1 to 6"},
        Fault{"EdgeZero", ".motions[0].edge", "0", "from 1 to 6"},
        Fault{"EdgeText", ".motions[0].edge", "\"rim\"",
              "\"rim\", expected the number of an edge, or a name under edges"},
        Fault{"EdgeNamedText", ".mechanisms[1].edges.saddle", "\"four\"", "a whole number from 1"},
        Fault{"SpacingZero", ".motions[0].spacing_mm", "0", "above 0"},
        Fault{"SmoothNegative", ".motions[0].smooth_mm", "-1", "above 0"},
        Fault{"SmoothTiny", ".motions[0].smooth_mm", "1e-9", "at most 1000000 poses"},
        Fault{"KeepNone", ".motions[0].keep_every", "0", "from 1 to 1000000"},
        Fault{"ToleranceMissing", ".motions[0].tolerance_mm", "", "missing"},
        Fault{"NameTwice", ".motions[1].name", "\"saddle\"", "no other motion has"},
        Fault{"OnePose", ".motions[1].poses", "[[0, 0, 0, 0, 0, 1]]", "1 poses, expected at least two"},
        Fault{"PoseShort", ".motions[1].poses[1]", "[0, 0, 0]", "six numbers"},
        Fault{"PoseNoDirection", ".motions[1].poses[1]", "[0, 0, 0, 0, 0, 0]", "not zero"},
        Fault{"PoseText", ".motions[1].poses[1][2]", "\"x\"", "a finite number"},
        Fault{"Misspelt", ".motions[0].spacing", "3", "unknown key"}),
    [](const auto& entry) { return entry.param.name; });
