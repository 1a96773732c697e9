#include "../cell/Documents.h"

#include <app/commands/Commands.h>
#include <cell/InputError.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class BadInput : public testing::TestWithParam<Fault> {
protected:
    void Check(Json::Value document) {
        GetParam().Apply(document);
        const auto file = folder.WriteJson("faulty.json", document);
        const cell::PlanRequest request{file, folder.path / "out"};
        std::ostringstream table;
        EXPECT_THAT(Thrown([&] { Plan(request, table); }),
                    AllOf(StartsWith(file.string() + ": "), HasSubstr(GetParam().Key() + ": "),
                          HasSubstr(", expected "), HasSubstr(GetParam().expected), Not(HasSubstr("\n"))));
        EXPECT_FALSE(std::filesystem::exists(request.folder));
        EXPECT_EQ(table.str(), "");
    }

    Folder folder;
};

using BadArm = BadInput;
using BadCell = BadInput;
using BadSystem = BadInput;
using BadToolPath = BadInput;

Json::Value GoodCell() {
    Json::Value cell = ExampleCell("arc_welding.json");
    Json::Value second = cell["mechanisms"][0];
    second["name"] = "helper";
    second["hash"] = 7;
    second.removeMember("placement");
    cell["mechanisms"].insert(1, second);
    cell["mechanisms"][0]["tools"] = Parsed(R"([{"location_mm": [1, 2, 3], "euler_deg": [0, 0, 0]}])");
    cell["mechanisms"][2]["work_type"] = 2;
    cell["mechanisms"][2]["paint"] = Parsed(R"({"up_radius_mm": 5, "down_radius_mm": 50, "length_mm": 90})");
    cell["mounts"] = Parsed(R"([{"entity": "helper", "on": "welder", "place": 0},
                                {"entity": "torch", "on": "helper", "place": 0}])");
    return cell;
}

Json::Value GoodSystem() {
    Json::Value cell = ExampleCell("rail_and_positioner.json");
    Json::Value second = cell["mechanisms"][1];
    second["name"] = "helper";
    second["hash"] = 7;
    cell["mechanisms"].append(second);
    cell["systems"].append(Parsed(R"({"robot": "helper"})"));
    cell["key_states"]["rest"] = Parsed(R"({"robot": "helper", "values_deg": [0, 0, 0, 0, 0, 0]})");
    cell["key_states"]["work"] = Parsed(R"({"robot": "helper", "values_deg": [9, 0, 0, 0, 0, 0]})");
    for (const char* motion :
         {R"({"name": "help", "kind": "tcp_gap", "gap_mm": 50, "states": ["rest", "work"]})",
          R"({"name": "both", "kind": "together", "motions": ["approach", "help"]})"}) {
        cell["motions"].append(Parsed(motion));
    }
    return cell;
}

Json::Value GoodToolPath() {
    Json::Value cell = ExampleCell("seam.json");
    cell["motions"].resize(1);
    Json::Value poses = cell["motions"][0];
    poses["name"] = "line";
    poses.removeMember("edge");
    poses.removeMember("spacing_mm");
    poses["poses"] = Parsed("[[-200, 0, 240, 0, 0, -1], [-160, 0, 240, 0, 0, -2]]");
    cell["motions"].append(poses);
    return cell;
}

TEST_P(BadArm, FaultIsReportedWithItsKeyPath) { Check(ReadDocument(Example("arms/abb_irb2400_10.json"))); }
TEST_P(BadCell, FaultIsReportedWithItsKeyPath) { Check(GoodCell()); }
TEST_P(BadSystem, FaultIsReportedWithItsKeyPath) { Check(GoodSystem()); }
TEST_P(BadToolPath, FaultIsReportedWithItsKeyPath) { Check(GoodToolPath()); }

const Fault ArmFaults[] = {
    {".kind", "\"pedestal\"", "robot"},
    {".kind", "3", "a text"},
    {".name", "", "missing, expected"},
    {".arm_structure", "3", "from 0 to 2"},
    {".coupled", "\"no\"", "true or false"},
    {".joints", "[0]", "1 joint, expected at least two"},
    {".joints[1].origin_mm", "[1, 2]", "[1,2], expected three numbers"},
    {".joints[1].origin_mm[2]", "\"x\"", "a finite number"},
    {".joints[1].origin_mm", "[0, 0, 1e300]", "from -1000000"},
    {".joints[2].axis", "[0, 0, 0]", "[0,0,0], expected a direction of length 1"},
    {".joints[2].axis", "[0, 0, 1.00001]", "length 1"},
    {".joints[0].axis", "[0, 0, -1]", "fit arm_structure"},
    {".joints[3].min_deg", "500", "at most max_deg"},
    {".flange.x_axis", "[0.6, 0, 0.8]", "perpendicular"},
    {".flange.z_axis", "[0, 1, 0]",
     "[0,1,0], expected [1,0,0], the last joint's axis: turn the flange by 90 "
     "degrees about [0,0,-1], which makes x_axis [0,0,-1]"},
    {".flange.z_axis", "[-1, 0, 0]", "by 180 degrees about [0,0,1], which makes x_axis [0,0,-1]"},
};
INSTANTIATE_TEST_SUITE_P(Arm, BadArm, testing::ValuesIn(ArmFaults));

const Fault ToolFaults[] = {
    {".mechanisms[2].parameters.Type", "\"weldgun\"", R"("weldgun", expected "WeldGun")"},
    {".mechanisms[2].parameters.tip_radius", "-1", "-1, expected a finite number above 0"},
    {".mechanisms[2].parameters.stickout", "3", "unknown key"},
    {".mechanisms[2].parameters", "[]", "an object"},
    {".mechanisms[2].work_type", "1", "0 for welding or 2 for painting"},
    {".mechanisms[2].work_type", "\"paint\"", "a whole number from 0 to 2"},
    {".mechanisms[2].paint.up_radius_mm", "0", "above 0"},
    {".mechanisms[2].paint.down_radius_mm", "5", "other than up_radius_mm"},
    {".mechanisms[2].paint.length_mm", "1e300", "at most 1000000 mm"},
    {".mechanisms[2].paint.length", "3", "unknown key"},
};
INSTANTIATE_TEST_SUITE_P(Tool, BadCell, testing::ValuesIn(ToolFaults));

const Fault CarrierFaults[] = {
    {".mechanisms[0].structure.kind", "\"bench\"", "\"pedestal\""},
    {".mechanisms[0].structure.joints[0].motion", "\"bent\"", "rotary or linear"},
    {".mechanisms[0].structure.joints[0].min_mm", "20000", "at most max_mm"},
    {".mechanisms[0].structure.joints", "[]", "0 joints, expected 1 to 6"},
    {".mechanisms[3].structure.joints[0].axis", "[0, 0, 0]", "length 1"},
    {".mechanisms[4].solids", "[]", "at least one solid"},
    {".mechanisms[4].solids[0].kind", "\"cone\"", "one of box, cylinder"},
    {".mechanisms[4].solids[0].size_mm[2]", "0", "above 0"},
    {".mechanisms[4].solids[0].size_mm", "[10, 10]", "three lengths"},
    {".mechanisms[4].solids[1].radius_mm", "1e9", "at most 1000000 mm"},
    {".mounts[1].entity", "\"welder\"", "not mounted yet"},
    {".mounts[1].placement", "[]", "an object"},
};
INSTANTIATE_TEST_SUITE_P(Carrier, BadSystem, testing::ValuesIn(CarrierFaults));

const Fault SystemFaults[] = {
    {".systems[1].pedestal", "\"rail\"", "the pedestal that helper is mounted on"},
    {".systems[0].pedestal", "\"positioner\"", "welder is mounted on"},
    {".systems[0].benches[0]", "\"rail\"", "the name of a bench"},
    {".systems[0].benches[1]", "\"positioner\"", "does not have yet"},
    {".key_states.home.pedestal", "", "missing"},
    {".key_states.home.pedestal", "[1, 2]", "2 values, expected 1, one for each axis of rail"},
    {".key_states.home.pedestal[0]", "10000.5", "mm from 0 to 10000"},
    {".key_states.home.benches", "[]", "0 lists, expected 1"},
    {".key_states.home.benches[0]", "[1]", "one for each axis of positioner"},
    {".key_states.home.benches[0][1]", "-200", "degrees from -199.9966 to 199.9966"},
    {".motions[0].pedestal[0]", "0", "above 0"},
    {".key_states.rest.pedestal", "[1]", "unknown key"},
    {".motions[3].motions", "[\"help\"]", "at least two motions"},
    {".motions[3].motions[1]", "\"weld\"", "another system than approach"},
    {".motions[3].motions[1]", "\"both\"", "an earlier motion of one system"},
};
INSTANTIATE_TEST_SUITE_P(System, BadSystem, testing::ValuesIn(SystemFaults));

const Fault CellFaults[] = {
    {".mechanisms", "\"robot\"", "a list of mechanisms"},
    {".mechanisms[1].name", "\"welder\"", "no other mechanism has"},
    {".mechanisms[1].hash", "2400", "welder has this one"},
    {".mechanisms[0].hash", "0", "0, expected a whole number from 1"},
    {".mechanisms[0].hash", "-1", "-1, expected"},
    {".mechanisms[0].kind", "\"crane\"", "expected one of bench, pedestal, robot, tool"},
    {".mechanisms[0].placment", "{}", "unknown key, expected one of"},
    {".mechanisms[0].placement.location_mm", "[0, 0]", "three numbers"},
    {".mechanisms[0].tools[0].euler_deg", "", "missing"},
    {".mounts[0].entity", "\"nobody\"", "\"nobody\", expected the name"},
    {".mounts[0].on", "\"nowhere\"", "the name of a mechanism"},
    {".mounts[0].place", "1", "from 0 to 0"},
    {".mounts[1]", R"({"entity": "torch", "on": "welder", "place": 0})", "already carries \"helper\""},
    {".mounts[2]", R"({"entity": "welder", "on": "helper", "place": 0})", "the entity does not carry"},
    {".systems[0].robot", "\"nobody\"", "the name of a robot"},
    {".systems[1].robot", "\"welder\"", "does not lead a system yet"},
    {".key_states.home.robot", "\"helper\"", "leads one of systems"},
    {".key_states.home.values_deg", "[1, 2]", "2 values, expected 6"},
    {".key_states.home.values_deg", "[0, 0, 65.01, 0, 0, 0]",
     "65.01 degrees at joint 3 of welder, expected from -60.0001 to 65.0021"},
    {".motions[0].kind", "\"jump\"", "one of joint_steps, linear, tcp_gap"},
    {".motions[1].name", "\"approach\"", "no other motion"},
    {".motions[0].states[1]", "\"lost\"", "one of key_states"},
    {".motions[0].states", "[\"home\"]", "at least two"},
    {".motions[0].steps_deg", "[1, 1]", "2 steps, expected 6"},
    {".motions[0].steps_deg[3]", "0", "above 0"},
    {".motions[0].steps_deg", "[1e-9, 1, 1, 1, 1, 1]", "at most 1000000 states"},
    {".motions[1].gap_mm", "-5", "above 0"},
};
INSTANTIATE_TEST_SUITE_P(Cell, BadCell, testing::ValuesIn(CellFaults));

const Fault PathFaults[] = {
    {".motions[0].workpiece", "\"table\"", "the name of a workpiece"},
    {".motions[0].edge", "99", "99, expected the number of an edge, from 1 to 6"},
    {".motions[0].edge", "0", "from 1 to 6"},
    {".motions[0].edge", "\"rim\"", "\"rim\", expected the number of an edge, or a name under edges"},
    {".mechanisms[1].edges.saddle", "\"four\"", "a whole number from 1"},
    {".motions[0].spacing_mm", "0", "above 0"},
    {".motions[0].smooth_mm", "-1", "above 0"},
    {".motions[0].smooth_mm", "1e-9", "at most 1000000 poses"},
    {".motions[0].keep_every", "0", "from 1 to 1000000"},
    {".motions[1].name", "\"saddle\"", "no other motion has"},
    {".motions[1].poses", "[[0, 0, 0, 0, 0, 1]]", "1 poses, expected at least two"},
    {".motions[1].poses[1]", "[0, 0, 0]", "six numbers"},
    {".motions[1].poses[1]", "[0, 0, 0, 0, 0, 0]", "not zero"},
    {".motions[0].spacing", "3", "unknown key"},
};
INSTANTIATE_TEST_SUITE_P(Path, BadToolPath, testing::ValuesIn(PathFaults));

TEST(BadTool, WithContradictoryNumbersIsRefused) {
    const Folder folder;
    const auto report = [&](const Fault& change) {
        Json::Value cell = GoodCell();
        change.Apply(cell);
        return ReportOf(folder.WriteJson("cell.json", cell));
    };
    EXPECT_THAT(report({".mechanisms[2].parameters.tip_radius", "13", ""}),
                HasSubstr("mechanisms[2].parameters: no tool comes of these numbers, expected"));
    EXPECT_THAT(report({".mechanisms[2].work_type", "0", ""}), HasSubstr("mechanisms[2].paint: "));
}

TEST(BadText, IsReportedWithTheFileName) {
    const Folder folder;
    const auto report = [&](const std::string& text) { return ReportOf(folder.Write("text.json", text)); };
    EXPECT_THAT(ReportOf(folder.path / "absent.json"),
                HasSubstr("absent.json: cannot be read (No such file or directory), expected"));
    EXPECT_THAT(ReportOf(folder.path), HasSubstr("is a folder"));
    // The file system reports a page and delivers a line, like a file that shrinks while it is read.
    if (const std::filesystem::path table = "/sys/devices/system/cpu/online"; exists(table)) {
        EXPECT_THAT(ReportOf(table), HasSubstr("changed its length while it was read"));
    }
    EXPECT_THAT(report(""), AllOf(HasSubstr("text.json: Line 1"), HasSubstr("expected a JSON document")));
    EXPECT_THAT(report("{\"name\": \n oops}"), AllOf(HasSubstr("Line 2"), Not(HasSubstr("\n"))));
    EXPECT_THAT(report(R"({"name": "a", "name": "b"})"), HasSubstr("Duplicate key: 'name'"));
    EXPECT_THAT(report("{\n\"name\": \"\xC3\"}"), HasSubstr("Line 2: a byte that is no part of a character"));
    EXPECT_THAT(report(R"({"name": "\udc00", "mechanisms": []})"), HasSubstr("name: "));
    EXPECT_THAT(report("{} {}"), HasSubstr("expected a JSON document"));
    EXPECT_THAT(report(R"({"name": NaN})"), HasSubstr("expected a JSON document"));
    EXPECT_THAT(report("[1]"), HasSubstr("[1], expected an object"));
    EXPECT_THAT(report(std::string(100000, '[')), HasSubstr("expected a JSON document"));
}

} // namespace
