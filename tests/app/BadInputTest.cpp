#include "Faults.h"

#include <cell/Commands.h>
#include <gmock/gmock.h>

using namespace cell;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class BadInput : public testing::TestWithParam<Fault> {
protected:
    void Check(Json::Value document) {
        Apply(GetParam(), document);
        const auto file = folder.Write("faulty.json", ToText(document));
        EXPECT_THAT(ReportOf(file),
                    AllOf(StartsWith(file.string() + ": "),
                          HasSubstr(std::string(GetParam().path).substr(1) + ": "), HasSubstr(", expected "),
                          HasSubstr(GetParam().expected), Not(HasSubstr("\n"))));
        const PlanRequest request{file, folder.path / "out"};
        std::ostringstream table;
        EXPECT_THROW(Plan(request, table), InputError);
        EXPECT_FALSE(std::filesystem::exists(request.folder));
        EXPECT_EQ(table.str(), "");
    }

    Folder folder;
};

using BadArm = BadInput;
using BadCell = BadInput;
using BadSystem = BadInput;

Json::Value GoodCell() {
    Json::Value cell = ReadDocument(Example("cells/arc_welding.json"));
    cell["mechanisms"][0]["model"] = Example("arms/abb_irb2400_10.json").string();
    Json::Value second = cell["mechanisms"][0];
    second["name"] = "helper";
    second["hash"] = 7;
    second.removeMember("placement");
    cell["mechanisms"].insert(1, second);
    cell["mechanisms"][0]["tools"] = Parse(R"([{"location_mm": [1, 2, 3], "euler_deg": [0, 0, 0]}])");
    cell["mechanisms"][2]["work_type"] = 2;
    cell["mechanisms"][2]["paint"] = Parse(R"({"up_radius_mm": 5, "down_radius_mm": 50, "length_mm": 90})");
    cell["mounts"] = Parse(R"([{"entity": "helper", "on": "welder", "place": 0},
                               {"entity": "torch", "on": "helper", "place": 0}])");
    return cell;
}

} // namespace

TEST_P(BadArm, IsReportedWithItsPlace) { Check(ReadDocument(Example("arms/abb_irb2400_10.json"))); }
Json::Value GoodSystem() {
    Json::Value cell = ReadDocument(Example("cells/rail_and_positioner.json"));
    for (const auto& [index, name] :
         {std::pair(0, "gudel_tmf2_rail_10m"), {1, "abb_irb2400_10"}, {3, "motoman_motopos_d500"}}) {
        Json::Value& item = cell["mechanisms"][index];
        item["structure"] = ReadDocument(Example("arms") / (std::string(name) + ".json"));
        item.removeMember("model");
    }
    Json::Value second = cell["mechanisms"][1];
    second["name"] = "helper";
    second["hash"] = 7;
    cell["mechanisms"].append(second);
    cell["systems"].append(Parse(R"({"robot": "helper"})"));
    cell["key_states"]["rest"] = Parse(R"({"robot": "helper", "values_deg": [0, 0, 0, 0, 0, 0]})");
    cell["key_states"]["work"] = Parse(R"({"robot": "helper", "values_deg": [9, 0, 0, 0, 0, 0]})");
    cell["motions"].append(
        Parse(R"({"name": "help", "kind": "tcp_gap", "gap_mm": 50, "states": ["rest", "work"]})"));
    cell["motions"].append(Parse(R"({"name": "both", "kind": "together", "motions": ["approach", "help"]})"));
    return cell;
}

TEST_P(BadSystem, IsReportedWithItsPlace) { Check(GoodSystem()); }
TEST_P(BadCell, IsReportedWithItsPlace) { Check(GoodCell()); }

constexpr const char* OneJoint =
    R"([{"origin_mm": [0, 0, 0], "axis": [0, 0, 1], "min_deg": -1, "max_deg": 1}])";

INSTANTIATE_TEST_SUITE_P(
    Arm, BadArm,
    testing::Values(
        Fault{"KindOfLater", ".kind", "\"pedestal\"", "robot"},
        Fault{"KindOfWrongType", ".kind", "3", "a text"}, Fault{"NoName", ".name", "", "missing, expected"},
        Fault{"StructureUnknown", ".arm_structure", "3", "from 0 to 2"},
        Fault{"CoupledAsText", ".coupled", "\"no\"", "true or false"},
        Fault{"CoupledWithSixJoints", ".joints", OneJoint, "1 joint, expected at least two"},
        Fault{"JointsNoList", ".joints", "{}", "a list"},
        Fault{"OriginTooShort", ".joints[1].origin_mm", "[1, 2]", "[1,2], expected three numbers"},
        Fault{"OriginNoNumber", ".joints[1].origin_mm[2]", "\"x\"", "a finite number"},
        Fault{"OriginMissing", ".joints[1].origin_mm", "", "missing"},
        Fault{"OriginFarOut", ".joints[1].origin_mm", "[0, 0, 1e300]", "from -1000000"},
        Fault{"AxisZero", ".joints[2].axis", "[0, 0, 0]", "[0,0,0], expected a direction of length 1"},
        Fault{"AxisTooLong", ".joints[2].axis", "[0, 0, 1.00001]", "length 1"},
        Fault{"AxisUnfit", ".joints[2].axis", "[1, 0, 0]", "fit arm_structure"},
        Fault{"AxisReversed", ".joints[0].axis", "[0, 0, -1]", "fit arm_structure"},
        Fault{"LimitsReversed", ".joints[3].min_deg", "500", "at most max_deg"},
        Fault{"LimitNull", ".joints[3].max_deg", "null", "a finite number"},
        Fault{"FlangeOblique", ".flange.x_axis", "[0.6, 0, 0.8]", "perpendicular"},
        Fault{"FlangeMissing", ".flange", "", "missing"}),
    [](const auto& entry) { return entry.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Tool, BadCell,
    testing::Values(
        Fault{"Type", ".mechanisms[2].parameters.Type", "\"weldgun\"", "\"weldgun\", expected \"WeldGun\""},
        Fault{"TypeMissing", ".mechanisms[2].parameters.Type", "", "missing"},
        Fault{"Negative", ".mechanisms[2].parameters.tip_radius", "-1",
              "-1, expected a finite number above 0"},
        Fault{"Text", ".mechanisms[2].parameters.tcp_z", "\"far\"", "a finite number"},
        Fault{"Missing", ".mechanisms[2].parameters.body_length", "", "a finite number above 0"},
        Fault{"Misspelt", ".mechanisms[2].parameters.stickout", "3", "unknown key"},
        Fault{"Straightened", ".mechanisms[2].parameters.torch_angle", "180.5", "at most 180"},
        Fault{"ParametersNoObject", ".mechanisms[2].parameters", "[]", "an object"},
        Fault{"WorkTypeUnknown", ".mechanisms[2].work_type", "1", "0 for welding or 2 for painting"},
        Fault{"WorkTypeText", ".mechanisms[2].work_type", "\"paint\"", "a whole number from 0 to 2"},
        Fault{"ConeZero", ".mechanisms[2].paint.up_radius_mm", "0", "above 0"},
        Fault{"ConeCylinder", ".mechanisms[2].paint.down_radius_mm", "5", "other than up_radius_mm"},
        Fault{"ConeHuge", ".mechanisms[2].paint.length_mm", "1e300", "at most 1000000 mm"},
        Fault{"ConeMissing", ".mechanisms[2].paint.length_mm", "", "missing"},
        Fault{"ConeMisspelt", ".mechanisms[2].paint.length", "3", "unknown key"},
        Fault{"DocumentAbsent", ".mechanisms[2].document", "3", "a text"}),
    [](const auto& entry) { return entry.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Carrier, BadSystem,
    testing::Values(
        Fault{"KindOfStructure", ".mechanisms[0].structure.kind", "\"bench\"", "\"pedestal\""},
        Fault{"MotionUnknown", ".mechanisms[0].structure.joints[0].motion", "\"bent\"", "rotary or linear"},
        Fault{"LimitsReversed", ".mechanisms[0].structure.joints[0].min_mm", "20000", "at most max_mm"},
        Fault{"LimitOfOtherUnit", ".mechanisms[3].structure.joints[1].min_deg", "", "missing"},
        Fault{"RailWithoutAxes", ".mechanisms[0].structure.joints", "[]", "0 joints, expected 1 to 6"},
        Fault{"AxisZero", ".mechanisms[3].structure.joints[0].axis", "[0, 0, 0]", "length 1"},
        Fault{"NoSolids", ".mechanisms[4].solids", "[]", "at least one solid"},
        Fault{"SolidKind", ".mechanisms[4].solids[0].kind", "\"cone\"", "one of box, cylinder"},
        Fault{"BoxFlat", ".mechanisms[4].solids[0].size_mm[2]", "0", "above 0"},
        Fault{"BoxTwoSizes", ".mechanisms[4].solids[0].size_mm", "[10, 10]", "three lengths"},
        Fault{"CylinderHuge", ".mechanisms[4].solids[1].radius_mm", "1e9", "at most 1000000 mm"},
        Fault{"MountedTwice", ".mounts[1].entity", "\"welder\"", "not mounted yet"},
        Fault{"MountPlacement", ".mounts[1].placement", "[]", "an object"}),
    [](const auto& entry) { return entry.param.name; });

INSTANTIATE_TEST_SUITE_P(
    System, BadSystem,
    testing::Values(
        Fault{"PedestalOfOther", ".systems[1].pedestal", "\"rail\"",
              "the pedestal that helper is mounted on"},
        Fault{"PedestalNoPedestal", ".systems[0].pedestal", "\"positioner\"", "welder is mounted on"},
        Fault{"BenchUnknown", ".systems[0].benches[0]", "\"rail\"", "the name of a bench"},
        Fault{"BenchTwice", ".systems[0].benches[1]", "\"positioner\"", "does not have yet"},
        Fault{"RailMissing", ".key_states.home.pedestal", "", "missing"},
        Fault{"RailTwice", ".key_states.home.pedestal", "[1, 2]",
              "2 values, expected 1, one for each axis of rail"},
        Fault{"RailBeyond", ".key_states.home.pedestal[0]", "10000.5", "mm from 0 to 10000"},
        Fault{"BenchesMissing", ".key_states.home.benches", "[]", "0 lists, expected 1"},
        Fault{"BenchShort", ".key_states.home.benches[0]", "[1]", "one for each axis of positioner"},
        Fault{"BenchBeyond", ".key_states.home.benches[0][1]", "-200", "degrees from -199.9966 to 199.9966"},
        Fault{"StepOfRail", ".motions[0].pedestal[0]", "0", "above 0"},
        Fault{"StepsOfBench", ".motions[0].benches", "", "missing"},
        Fault{"RailOfOther", ".key_states.rest.pedestal", "[1]", "unknown key"},
        Fault{"TogetherAlone", ".motions[3].motions", "[\"help\"]", "at least two motions"},
        Fault{"TogetherOneSystem", ".motions[3].motions[1]", "\"weld\"", "another system than approach"},
        Fault{"TogetherItself", ".motions[3].motions[1]", "\"both\"", "an earlier motion of one system"}),
    [](const auto& entry) { return entry.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Cell, BadCell,
    testing::Values(
        Fault{"NameMissing", ".name", "", "missing"},
        Fault{"MechanismsNoList", ".mechanisms", "\"robot\"", "a list of mechanisms"},
        Fault{"NameTwice", ".mechanisms[1].name", "\"welder\"", "no other mechanism has"},
        Fault{"HashTwice", ".mechanisms[1].hash", "2400", "welder has this one"},
        Fault{"HashZero", ".mechanisms[0].hash", "0", "0, expected a whole number from 1"},
        Fault{"HashNegative", ".mechanisms[0].hash", "-1", "-1, expected"},
        Fault{"KindUnknown", ".mechanisms[0].kind", "\"crane\"",
              "expected one of bench, pedestal, robot, tool"},
        Fault{"KeyMisspelt", ".mechanisms[0].placment", "{}", "unknown key, expected one of"},
        Fault{"PlacementShort", ".mechanisms[0].placement.location_mm", "[0, 0]", "three numbers"},
        Fault{"ToolNoAngles", ".mechanisms[0].tools[0].euler_deg", "", "missing"},
        Fault{"MountUnknown", ".mounts[0].entity", "\"nobody\"", "\"nobody\", expected the name"},
        Fault{"MountOnUnknown", ".mounts[0].on", "\"nowhere\"", "the name of a mechanism"},
        Fault{"MountPlace", ".mounts[0].place", "1", "from 0 to 0"},
        Fault{"SystemUnknown", ".systems[0].robot", "\"nobody\"", "the name of a robot"},
        Fault{"SystemTwice", ".systems[1].robot", "\"welder\"", "does not lead a system yet"},
        Fault{"StateWithoutSystem", ".key_states.home.robot", "\"helper\"", "leads one of systems"},
        Fault{"StateShort", ".key_states.home.values_deg", "[1, 2]", "2 values, expected 6"},
        Fault{"StateBeyondLimit", ".key_states.home.values_deg", "[0, 0, 65.01, 0, 0, 0]",
              "65.01 degrees at joint 3 of welder, expected from -60.0001 to 65.0021"},
        Fault{"MotionKind", ".motions[0].kind", "\"jump\"", "one of joint_steps, tcp_gap"},
        Fault{"MotionTwice", ".motions[1].name", "\"approach\"", "no other motion"},
        Fault{"MotionState", ".motions[0].states[1]", "\"lost\"", "one of key_states"},
        Fault{"MotionOneState", ".motions[0].states", "[\"home\"]", "at least two"},
        Fault{"StepsCount", ".motions[0].steps_deg", "[1, 1]", "2 steps, expected 6"},
        Fault{"StepZero", ".motions[0].steps_deg[3]", "0", "above 0"},
        Fault{"StepsTiny", ".motions[0].steps_deg", "[1e-9, 1, 1, 1, 1, 1]", "at most 1000000 states"},
        Fault{"GapNegative", ".motions[1].gap_mm", "-5", "above 0"},
        Fault{"GapMissing", ".motions[1].gap_mm", "", "missing"}),
    [](const auto& entry) { return entry.param.name; });

TEST(BadMount, OnWhatTheEntityCarriesIsRefused) {
    const Folder folder;
    Json::Value cell = GoodCell();
    cell["mounts"].append(Parse(R"({"entity": "welder", "on": "helper", "place": 0})"));
    EXPECT_THAT(ReportOf(folder.Write("cell.json", ToText(cell))), HasSubstr("mounts[2]: "));
}

TEST(BadTool, WhoseNumbersContradictEachOtherIsRefused) {
    const Folder folder;
    const auto report = [&](const char* key, const char* value) {
        Json::Value cell = GoodCell();
        Json::Path(key).make(cell) = Parse(value);
        return ReportOf(folder.Write("cell.json", ToText(cell)));
    };
    EXPECT_THAT(report(".mechanisms[2].parameters.tip_radius", "13"),
                HasSubstr("mechanisms[2].parameters: no tool comes of these numbers, expected"));
    EXPECT_THAT(report(".mechanisms[2].work_type", "0"), HasSubstr("mechanisms[2].paint: "));
    EXPECT_THAT(report(".mounts[1].on", "\"welder\""), HasSubstr("already carries \"helper\""));
}

TEST(BadText, IsReportedWithTheFile) {
    const Folder folder;
    const auto report = [&](const std::string& text) { return ReportOf(folder.Write("text.json", text)); };
    EXPECT_THAT(ReportOf(folder.path / "absent.json"), HasSubstr("absent.json: cannot be read, expected"));
    EXPECT_THAT(ReportOf(folder.path), HasSubstr("is a folder"));
    // The kernel's tables say a page and give a line: a file that shrank between the two looks the same.
    if (const std::filesystem::path table = "/sys/devices/system/cpu/online"; exists(table)) {
        EXPECT_THAT(ReportOf(table), HasSubstr("changed its length while it was read"));
    }
    EXPECT_THAT(report(""), AllOf(HasSubstr("text.json: Line 1"), HasSubstr("expected a JSON document")));
    EXPECT_THAT(report("{\"name\": \n oops}"), AllOf(HasSubstr("Line 2"), Not(HasSubstr("\n"))));
    EXPECT_THAT(report(R"({"name": "a", "name": "b"})"), HasSubstr("Duplicate key: 'name'"));
    EXPECT_THAT(report("{} {}"), HasSubstr("expected a JSON document"));
    EXPECT_THAT(report(R"({"name": NaN})"), HasSubstr("expected a JSON document"));
    EXPECT_THAT(report("[1]"), HasSubstr("[1], expected an object"));
    EXPECT_THAT(report(std::string(100000, '[')), HasSubstr("expected a JSON document"));
}
