#include "Documents.h"

#include <BRepBndLib.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <cell/ArmShapes.h>
#include <cell/Cell.h>
#include <cell/Commands.h>
#include <cell/InputError.h>
#include <cell/JointValues.h>
#include <cell/OutputFile.h>
#include <cell/Solids.h>
#include <cell/Text.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <host/tools/gpHandle.h>
#include <sstream>

using namespace cell;

namespace {

// A dozen products of entries that are at most one.
constexpr double Rounding = 1e-15;
/// Frames that went through the same products in another order, in mm at a few metres.
constexpr double SameFrame = 1e-9;

double Deviation(const Rigid& a, const Rigid& b) {
    double deviation = 0;
    for (int i = 0; i < 9; ++i) {
        deviation = std::max(deviation, std::abs(a.r[i] - b.r[i]));
    }
    for (int i = 0; i < 3; ++i) {
        deviation = std::max(deviation, std::abs(a.p[i] - b.p[i]));
    }
    return deviation;
}

class EveryArm : public testing::TestWithParam<const char*> {
protected:
    const std::filesystem::path file = Example("arms") / (std::string(GetParam()) + ".json");
    const ArmDescription arm = ReadArm(JsonNode::Load(file));
};

} // namespace

TEST(FrameOfJoint, TurnsAboutTheAxisWhicheverWayItPoints) {
    const Triple origin{10, -20, 30};
    for (const Triple& raw : std::vector<Triple>{{1, 0, 0},
                                                 {0, 1, 0},
                                                 {0, 0, 1},
                                                 {-1, 0, 0},
                                                 {0, -1, 0},
                                                 {0, 0, -1},
                                                 {0.6, 0, -0.8},
                                                 {0.1, 0.99, 0.05},
                                                 {1, 1e-9, 0},
                                                 {1, 2, 3}}) {
        const Triple axis = Unit(raw);
        const auto [frame, type] = FrameOfJoint(origin, axis);
        const gp_Dir own = LinkRod::GetAxis(type);
        EXPECT_LE(Length(Minus(Turn(frame, {own.X(), own.Y(), own.Z()}), axis)), Rounding);
        EXPECT_LE(Deviation(Inverse(frame) * frame, Rigid()), SameFrame);
        EXPECT_NEAR(Dot(Cross(Turn(frame, {1, 0, 0}), Turn(frame, {0, 1, 0})), Turn(frame, {0, 0, 1})), 1,
                    Rounding);
        EXPECT_EQ(Apply(frame, {0, 0, 0}), origin);
    }
}

TEST(FrameOfFlange, KeepsZAndCorrectsX) {
    const Rigid frame = FrameOfFlange({1, 2, 3}, {-0.0001, 0, -0.999999995}, {0.999999995, 1e-7, -0.0001});
    const Triple z = Unit({0.999999995, 1e-7, -0.0001});
    EXPECT_LE(Length(Minus(Turn(frame, {0, 0, 1}), z)), Rounding);
    EXPECT_NEAR(Dot(Turn(frame, {1, 0, 0}), z), 0, Rounding);
    EXPECT_NEAR(Length(Turn(frame, {1, 0, 0})), 1, Rounding);
}

TEST(Text, NumbersReadAsPeopleWroteThem) {
    EXPECT_EQ(Rounded(-1e-12, 9), "0");
    EXPECT_EQ(Rounded(1200, 0), "1200");
    EXPECT_EQ(Rounded(-2.50, 3), "-2.5");
    EXPECT_EQ(ParseNumbers("1, -2.5\t+3e1\r"), (std::vector<double>{1, -2.5, 30}));
    EXPECT_EQ(ParseNumbers(" "), std::vector<double>());
    for (const char* bad : {"1,,x", "0x10", "nan", "-inf", "1e999", "1;2", "--1", "1.2.3"}) {
        EXPECT_EQ(ParseNumbers(bad), std::nullopt) << bad;
    }
}

TEST_P(EveryArm, ShowsTheLimitsOfItsFile) {
    std::ostringstream out;
    Info({file}, out);
    for (std::size_t i = 0; i < arm.joints.size(); ++i) {
        EXPECT_THAT(out.str(),
                    testing::HasSubstr(" " + std::to_string(i + 1) + ": " + Shortest(arm.joints[i].minDeg) +
                                       " to " + Shortest(arm.joints[i].maxDeg) + ", "));
    }
}

TEST_P(EveryArm, BodiesAreSoundSolidsThatReachFromJointToJoint) {
    const Bodies bodies = ShapeArm(arm);
    for (std::size_t i = 0; i < bodies.links.size(); ++i) {
        SCOPED_TRACE("link " + std::to_string(i + 1));
        Bnd_Box box;
        for (const Body& body : bodies.links[i]) {
            EXPECT_TRUE(BRepCheck_Analyzer(body.shape).IsValid());
            for (TopExp_Explorer solid(body.shape, TopAbs_SOLID); solid.More(); solid.Next()) {
                GProp_GProps volume;
                BRepGProp::VolumeProperties(solid.Current(), volume);
                EXPECT_GT(volume.Mass(), 0);
            }
            BRepBndLib::Add(body.shape, box);
        }
        ASSERT_FALSE(box.IsVoid());
        if (i + 1 < bodies.links.size()) {
            EXPECT_FALSE(box.IsOut(Point(arm.joints[i + 1].origin))) << "a gap before the next joint";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Arms, EveryArm,
                         testing::Values("abb_irb2400_10", "abb_irb5400_paint", "kuka_kr16_2",
                                         "motoman_ma2010", "staubli_tx90", "ur_ur10e"),
                         [](const auto& entry) { return std::string(entry.param); });

TEST(Mount, TheMountedFollowsItsCarrier) {
    const Folder folder;
    Json::Value json = ReadDocument(Example("cells/arc_welding.json"));
    json["mechanisms"][0]["model"] = Example("arms/abb_irb2400_10.json").string();
    Json::Value small = json["mechanisms"][0];
    small["name"] = "small";
    small["hash"] = 90;
    json["mechanisms"].append(small);
    json["mounts"][0]["entity"] = "small";
    json["mounts"][0]["on"] = "welder";
    json["mounts"][0]["place"] = 0;
    const Cell cell = Cell::Load(folder.Write("cell.json", ToText(json)));
    RobotEntity& carrier = *cell.Robots()[0];
    MoveTo(carrier, {0.3, -0.2, 0.4, 1.0, -0.5, 2.0});
    EXPECT_TRUE(
        gpHandle::IsSameTrsf(cell.Robots()[1]->GetRootMdlTrsf(), carrier.GetCurrentTrsfTool0(), SameFrame));
}

TEST(WriteWhole, LeavesTheOldFileWhereTheNewOneFails) {
    const Folder folder;
    const auto target = folder.path / "deeper" / "file.txt";
    WriteWhole(target, "old");
    const auto spoil = [](const std::filesystem::path& beside) {
        std::ofstream(beside) << "half";
        return false;
    };
    EXPECT_THROW(WriteWhole(target, spoil), InputError);
    EXPECT_THROW(WriteWhole(target, [&](const auto& beside) -> bool { throw spoil(beside); }), bool);
    std::ifstream stream(target);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(target.parent_path()), {}), 1);
    EXPECT_THROW(WriteWhole(folder.path / "deeper", "a file in place of a folder"), InputError);
    EXPECT_THROW(WriteWhole(target / "below" / "a_file", "x"), InputError);
}
