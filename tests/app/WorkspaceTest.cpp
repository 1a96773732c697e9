#include "Faults.h"

#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <cell/Commands.h>
#include <cell/Reach.h>
#include <cell/ShapeFile.h>
#include <gmock/gmock.h>
#include <host/tools/ShapeHandle.h>
#include <limits>
#include <mechanism/RobotWorkspace.h>
#include <support/Thrown.h>

using namespace cell;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// STEP and BRep carry the exact solids; triangles that lie half a millimetre inside take this much off.
constexpr double ExactShare = 1e-6;
constexpr double TriangleShare = 2e-3;

Json::Value Welding() {
    Json::Value json = ReadDocument(Example("cells/arc_welding.json"));
    json["mechanisms"][0]["structure"] = ReadDocument(Example("arms/abb_irb2400_10.json"));
    json["mechanisms"][0].removeMember("model");
    return json;
}

std::string Report(const WorkspaceRequest& request) {
    std::ostringstream out;
    return Thrown([&] { WriteWorkspace(request, out); });
}

struct Format {
    const char* extension;
    int solids;
    double share;
};

class Output : public testing::TestWithParam<Format> {};

TEST_P(Output, HoldsTheEnvelopeInTheWorld) {
    const auto& [extension, solids, share] = GetParam();
    const Folder folder;
    const Cell cell = Cell::Load(Example("cells/arc_welding.json"));
    const TopoDS_Shape envelope = ReachOf(cell, *cell.Robots().front()).envelope;
    const std::string name = std::string("reach") + extension;
    ASSERT_EQ(Report({Example("cells/arc_welding.json"), "welder", folder.path / name, ""}), "");
    const TopoDS_Shape read =
        ReadShape(JsonNode::Load(folder.Write("item.json", R"({"file": ")" + name + "\"}")).At("file"));
    int found = 0;
    for (TopExp_Explorer it(read, TopAbs_SOLID); it.More(); it.Next(), ++found) {
        EXPECT_TRUE(BRepCheck_Analyzer(it.Current()).IsValid());
    }
    EXPECT_EQ(found, solids);
    Bnd_Box written;
    Bnd_Box wanted;
    BRepBndLib::Add(read, written, false);
    BRepBndLib::Add(envelope, wanted, false);
    EXPECT_NEAR(std::sqrt(written.SquareExtent() / wanted.SquareExtent()), 1, TriangleShare);
    if (solids > 0) {
        EXPECT_NEAR(ShapeHandle::GetAreaOrVol(read) / ShapeHandle::GetAreaOrVol(envelope), 1, share);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, Output,
                         testing::Values(Format{".step", 2, ExactShare}, Format{".brep", 2, ExactShare},
                                         Format{".stl", 0, TriangleShare}),
                         [](const auto& entry) { return std::string(entry.param.extension).substr(1); });

class BadReach : public testing::TestWithParam<Fault> {};

TEST_P(BadReach, IsReportedWithWhatIsMissing) {
    const Folder folder;
    Json::Value json = Welding();
    for (const char* part : {"motions", "key_states"}) {
        json.removeMember(part);
    }
    Apply(GetParam(), json);
    const auto file = folder.Write("cell.json", ToText(json));
    EXPECT_THAT(Report({file, "welder", folder.path / "reach.step", ""}),
                AllOf(HasSubstr("cell.json: " + std::string(GetParam().path).substr(1)),
                      HasSubstr(GetParam().expected), Not(HasSubstr("\n"))));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "reach.step"));
}

INSTANTIATE_TEST_SUITE_P(
    Keys, BadReach,
    testing::Values(Fault{"NoSystem", ".systems", "[]", R"(an entry {"robot": "welder"})"},
                    Fault{"NarrowLimits", ".mechanisms[0].structure.joints[2]",
                          R"({"origin_mm": [100, 0, 1320], "axis": [0, 1, 0], "min_deg": 1, "max_deg": 6.9})",
                          "min_deg 1 to max_deg 6.9, expected at least 6 degrees"}),
    [](const auto& entry) { return entry.param.name; });

// What no file can say, but a program that moves the robot about can.
TEST(SpoiltRobot, IsReportedByWhatItsRecordLacks) {
    using Spoil = void (*)(RobotEntity&);
    const std::vector<std::tuple<const char*, Spoil, const char*>> faults = {
        {"arms/kuka_kr16_2.json",
         [](RobotEntity& robot) { GrpConfig::ChangeCoupledList().erase(robot.GetHashIndex()); },
         "no coupling record for hash "},
        {"arms/kuka_kr16_2.json",
         [](RobotEntity& robot) {
             gp_Trsf tool;
             tool.SetTranslation(gp_Vec(0, 0, std::numeric_limits<double>::quiet_NaN()));
             robot.SetTools({tool});
         },
         "expected finite numbers in its tools"},
        {"cells/rail_and_positioner.json",
         [](RobotEntity& robot) {
             gp_Trsf mount;
             mount.SetScale(gp::Origin(), 0.5);
             robot.SetAssembleTrsf(mount);
         },
         "on a carrier that neither scales nor shears it"}};
    for (const auto& [file, spoil, text] : faults) {
        const Cell cell = Cell::Load(Example(file));
        RobotEntity& robot = *cell.Robots().front();
        spoil(robot);
        EXPECT_THAT(Thrown([&] { ReachOf(cell, robot); }), HasSubstr(text));
    }
}

TEST(WorkspaceTest, NamesOfUnknownKindsAreRefusedBeforeAnythingIsRead) {
    EXPECT_THAT(Report({"absent.json", "", "reach.obj", ""}),
                HasSubstr(".obj, expected a name that ends in"));
    EXPECT_THAT(Report({"absent.json", "", "reach.stl", "reach.png"}), HasSubstr("ends in .svg"));
}

} // namespace
