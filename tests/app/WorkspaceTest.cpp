#include "../cell/Documents.h"

#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <app/commands/Commands.h>
#include <cell/documents/ShapeFile.h>
#include <cell/plan/Reach.h>
#include <host/tools/ShapeHandle.h>
#include <host/tools/gpHandle.h>

using namespace cell;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// STEP and BRep carry the exact solids; triangles that lie half a millimetre inside take this much off.
constexpr double ExactShare = 1e-6;
constexpr double TriangleShare = 2e-3;

std::string Report(const WorkspaceRequest& request) {
    std::ostringstream out;
    return Thrown([&] { WriteWorkspace(request, out); });
}

class Output : public testing::TestWithParam<const char*> {};

TEST_P(Output, HoldsTheEnvelopeInTheWorld) {
    const Folder folder;
    const Cell cell = Cell::Load(Example("cells/arc_welding.json"));
    const TopoDS_Shape envelope = ReachOf(cell, *cell.Robots().front()).envelope;
    const std::string name = std::string("reach.") + GetParam();
    ASSERT_EQ(Report({Example("cells/arc_welding.json"), "welder", folder.path / name, ""}), "");
    const TopoDS_Shape read =
        ReadShape(JsonNode::Load(folder.Write("item.json", R"({"file": ")" + name + "\"}")).At("file"));
    int solids = 0;
    for (TopExp_Explorer it(read, TopAbs_SOLID); it.More(); it.Next(), ++solids) {
        EXPECT_TRUE(BRepCheck_Analyzer(it.Current()).IsValid());
    }
    EXPECT_EQ(solids, GetParam() == std::string("stl") ? 0 : 2);
    Bnd_Box written;
    Bnd_Box wanted;
    BRepBndLib::Add(read, written, false);
    BRepBndLib::Add(envelope, wanted, false);
    EXPECT_NEAR(std::sqrt(written.SquareExtent() / wanted.SquareExtent()), 1, TriangleShare);
    if (solids > 0) {
        EXPECT_NEAR(ShapeHandle::GetAreaOrVol(read) / ShapeHandle::GetAreaOrVol(envelope), 1, ExactShare);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, Output, testing::Values("step", "brep", "stl"),
                         [](const auto& entry) { return std::string(entry.param); });

TEST(WorkspaceTest, OfAnUnfitCellIsRefusedWithWhatItLacks) {
    const Folder folder;
    const Fault faults[] = {
        {".systems", "[]", R"(an entry {"robot": "welder"})"},
        {".mechanisms[0].structure.joints[2]",
         R"({"origin_mm": [100, 0, 1320], "axis": [0, 1, 0], "min_deg": 1, "max_deg": 6.9})",
         "min_deg 1 to max_deg 6.9, expected at least 6 degrees"}};
    for (const Fault& fault : faults) {
        Json::Value json = ExampleCell("arc_welding.json");
        json.removeMember("motions");
        json.removeMember("key_states");
        fault.Apply(json);
        const auto file = folder.WriteJson("cell.json", json);
        EXPECT_THAT(
            Report({file, "welder", folder.path / "reach.step", ""}),
            AllOf(HasSubstr("cell.json: " + fault.Key()), HasSubstr(fault.expected), Not(HasSubstr("\n"))));
        EXPECT_FALSE(std::filesystem::exists(folder.path / "reach.step"));
    }
}

// What no file can say, but a program that moves the robot about can.
TEST(WorkspaceTest, OfASpoiltRobotIsRefusedWithWhatItsRecordLacks) {
    const auto report = [](const char* file, const auto& spoil) {
        const Cell cell = Cell::Load(Example(file));
        RobotEntity& robot = *cell.Robots().front();
        spoil(robot);
        return Thrown([&] { ReachOf(cell, robot); });
    };
    EXPECT_THAT(report("arms/kuka_kr16_2.json",
                       [](auto& robot) { GrpConfig::ChangeCoupledList().erase(robot.GetHashIndex()); }),
                HasSubstr("no coupling record for hash "));
    EXPECT_THAT(report("arms/kuka_kr16_2.json",
                       [](auto& robot) {
                           robot.SetTools({gpHandle::EulerToTrsf(LocEuler({0, 0, std::nan("")}, {}))});
                       }),
                HasSubstr("expected finite numbers in its tools"));
    EXPECT_THAT(report("cells/rail_and_positioner.json",
                       [](auto& robot) {
                           gp_Trsf mount;
                           mount.SetScale(gp::Origin(), 0.5);
                           robot.SetAssembleTrsf(mount);
                       }),
                HasSubstr("on a carrier that neither scales nor shears it"));
}

TEST(WorkspaceTest, NamesOfUnknownKindsAreRefusedBeforeAnythingIsRead) {
    EXPECT_THAT(Report({"absent.json", "", "reach.obj", ""}),
                HasSubstr(".obj, expected a name that ends in"));
    EXPECT_THAT(Report({"absent.json", "", "reach.stl", "reach.png"}), HasSubstr("ends in .svg"));
}

} // namespace
