#include "Documents.h"

#include <cell/Planner.h>
#include <cell/documents/JsonNode.h>
#include <cmath>
#include <support/SampleMechanisms.h>

using namespace cell;

namespace {

constexpr double OnSeam = 1e-6;   // mm; STEP and IK keep more
constexpr double Deviation = 0.1; // mm, the default
constexpr double Turned = 2e-7;   // rad, of a direction that was found by acos
constexpr double Degree = std::numbers::pi / 180;
constexpr double AxisDeviation = 0.2 * Degree; // the default

gp_Dir ToDir(const Json::Value& v) { return {v[0].asDouble(), v[1].asDouble(), v[2].asDouble()}; }
gp_Pnt ToPoint(const Json::Value& v) { return {v[0].asDouble(), v[1].asDouble(), v[2].asDouble()}; }

/// A mechanism's axes as its file has them, which knows nothing of tables and links.
sample::Mechanism FromFile(const Json::Value& file) {
    const Json::Value& flange = file["flange"];
    sample::Mechanism mechanism{.axes = {},
                                .flange = sample::Frame(ToPoint(flange["origin_mm"]), ToDir(flange["z_axis"]),
                                                        ToDir(flange["x_axis"])),
                                .coupled = file["coupled"].asBool()};
    for (const Json::Value& joint : file["joints"]) {
        mechanism.axes.emplace_back(ToPoint(joint["origin_mm"]), ToDir(joint["axis"]));
        mechanism.linear.push_back(joint["motion"].asString() == "linear");
    }
    return mechanism;
}

/// Refuses a value outside the limits in the axis' file.
void ExpectWithinLimits(const Json::Value& file, const std::vector<double>& values) {
    for (Json::ArrayIndex i = 0; i < values.size(); ++i) {
        const Json::Value& joint = file["joints"][i];
        const bool slides = joint["motion"].asString() == "linear";
        const double value = slides ? values[i] : values[i] / Degree;
        const char* unit = slides ? "_mm" : "_deg";
        ASSERT_GE(value, joint[std::string("min") + unit].asDouble() - Turned) << "axis " << i + 1;
        ASSERT_LE(value, joint[std::string("max") + unit].asDouble() + Turned) << "axis " << i + 1;
    }
}

/// Direction at part `t` of the turn from one to another in their plane.
gp_Dir Between(const gp_Dir& from, const gp_Dir& to, double t) {
    const double angle = from.Angle(to);
    return angle < Turned ? from : gp_Dir(from).Rotated(gp_Ax1(gp_Pnt(), from.Crossed(to)), t * angle);
}

struct Expected {
    const char* file;
    double tilt;     ///< that the tool may lean off the path's direction, rad
    double downhand; ///< of the up direction off the vertical, rad; 0 where nothing was asked
};

class FollowedCell : public testing::TestWithParam<Expected> {
protected:
    FollowedCell() {
        for (const Json::Value& item : json["mechanisms"]) {
            if (item.isMember("structure")) {
                models[item["name"].asString()] = FromFile(item["structure"]);
                files[item["name"].asString()] = item["structure"];
            }
        }
    }
    const GenericEntity& Entity(const std::string& name) const { return *cell.Find(name); }
    gp_Trsf At(const GenericEntity* carrier, const std::vector<double>& values) const {
        return carrier->GetRootMdlTrsf() * models.at(carrier->GetName()).FlangeAt(values);
    }
    /// Workpiece in the world.
    gp_Trsf Work(GrpState& state) const {
        const GenericEntity* carrier = workpiece.GetMountingEntity();
        return carrier == nullptr ? workpiece.GetRootMdlTrsf()
                                  : At(carrier, state.GetValues(Bench)) * workpiece.GetAssembleTrsf();
    }
    /// Tool centre as the workpiece sees it.
    gp_Trsf Tool(GrpState& state) const {
        const RobotEntity& robot = *motion.system->robot;
        const GenericEntity* carrier = robot.GetMountingEntity();
        const gp_Trsf base = carrier == nullptr
                                 ? robot.GetRootMdlTrsf()
                                 : At(carrier, state.GetValues(Pedestal)) * robot.GetAssembleTrsf();
        return Work(state).Inverted() * base * models.at(robot.GetName()).FlangeAt(state.GetValues(Robot)) *
               robot.GetCurrentToolWithOffset();
    }

    const Json::Value json = ExampleCell(GetParam().file);
    const Folder folder;
    const Cell cell = Cell::Load(folder.WriteJson("cell.json", json));
    const Motion& motion = cell.Motions().back();
    const ToolPath& path = cell.ToolPaths().back();
    const Workpiece& workpiece = *path.workpiece;
    std::map<std::string, sample::Mechanism> models;
    std::map<std::string, Json::Value> files;
};

double Distance(const gp_Pnt& p, const gp_Pnt& a, const gp_Pnt& b) {
    const gp_Vec leg(a, b);
    const double length = leg.SquareMagnitude();
    const double t = length > 0 ? std::clamp(gp_Vec(a, p).Dot(leg) / length, 0.0, 1.0) : 0;
    return p.Distance(a.Translated(leg * t));
}

TEST_P(FollowedCell, KeepsItsPathAnglesLimitsAndStepsByProductsOfExponentials) {
    std::vector<PlannedMotion> plan = PlanMotions(cell, {});
    std::size_t next = 0; // pose of the path
    GrpState* before = nullptr;
    int works = 0;
    for (GrpState& state : plan.back().states) {
        const std::vector<double> values = state.GetValues();
        for (std::size_t i = 0; before != nullptr && i < values.size(); ++i) {
            const bool slides = motion.system->pedestal != nullptr && i + 1 == values.size();
            ASSERT_LE(std::abs(values[i] - before->GetValues()[i]), (slides ? 50 : 10 * Degree) + Turned);
        }
        ExpectWithinLimits(files.at(motion.system->robot->GetName()), state.GetValues(Robot));
        if (motion.system->pedestal != nullptr) {
            ExpectWithinLimits(files.at(motion.system->pedestal->GetName()), state.GetValues(Pedestal));
        }
        const bool onWay = before != nullptr && before->IsWorkState() && state.IsWorkState();
        for (int k = 1; onWay && k < 20; ++k) {
            GrpState between = *before;
            std::vector<double> blend = before->GetValues();
            for (std::size_t i = 0; i < blend.size(); ++i) {
                blend[i] += (values[i] - blend[i]) * k / 20;
            }
            between.SetValues(blend);
            ASSERT_LE(Distance(Tool(between).TranslationPart(), Tool(*before).TranslationPart(),
                               Tool(state).TranslationPart()),
                      Deviation);
            const auto axis = [&](GrpState& at) { return gp_Dir(0, 0, 1).Transformed(Tool(at)); };
            ASSERT_LE(axis(between).Angle(Between(axis(*before), axis(state), k / 20.0)),
                      AxisDeviation + Turned);
        }
        before = &state;
        if (!state.IsWorkState()) {
            continue;
        }
        ++works;
        ASSERT_LT(next, path.poses.size());
        const auto& [x, y, z, dx, dy, dz] = path.poses[next];
        const gp_Trsf tool = Tool(state);
        const gp_Pnt centre(tool.TranslationPart());
        if (next > 0) {
            const ToolPose& last = path.poses[next - 1];
            ASSERT_LE(Distance(centre, gp_Pnt(last[0], last[1], last[2]), gp_Pnt(x, y, z)), OnSeam);
        }
        const double off = gp_Dir(0, 0, 1).Transformed(tool).Angle(gp_Dir(dx, dy, dz));
        if (centre.Distance(gp_Pnt(x, y, z)) <= OnSeam && off <= GetParam().tilt + Turned) {
            ++next;
            const gp_Dir up = gp_Dir(-dx, -dy, -dz).Transformed(Work(state));
            EXPECT_TRUE(GetParam().downhand == 0 || up.Angle(gp::DZ()) <= GetParam().downhand + Turned);
        }
    }
    EXPECT_EQ(next, path.poses.size()) << "a pose was left out, or its angles are off";
    EXPECT_GE(works, static_cast<int>(path.poses.size()));
    EXPECT_FALSE(plan.back().states.front().IsWorkState());
    EXPECT_FALSE(plan.back().states.back().IsWorkState());
}

INSTANTIATE_TEST_SUITE_P(Cells, FollowedCell,
                         testing::Values(Expected{"seam.json", std::sqrt(2.0) * 5 * Degree, 15 * Degree},
                                         Expected{"fillet.json", std::sqrt(2.0) * 5 * Degree, 0},
                                         Expected{"rail_seam.json", std::sqrt(2.0) * 5 * Degree, 0},
                                         Expected{"painting.json", std::sqrt(2.0) * 10 * Degree, 0}),
                         [](const auto& parameter) {
                             const std::string file = parameter.param.file;
                             return file.substr(0, file.find('.'));
                         });

class BadFollow : public testing::TestWithParam<Fault> {};

TEST_P(BadFollow, IsReportedWithItsPlace) {
    Json::Value cell = ExampleCell("seam.json");
    GetParam().Apply(cell);
    const Folder folder;
    const std::string report = ReportOf(folder.WriteJson("cell.json", cell));
    EXPECT_THAT(report, testing::HasSubstr(GetParam().expected));
}

TEST(Follow, OfAWorkpieceOnABenchThatTheRobotDoesNotMoveIsRefused) {
    Json::Value cell = ExampleCell("seam.json");
    cell["systems"][0].removeMember("benches");
    cell["key_states"]["home"].removeMember("benches");
    cell["motions"][2].removeMember("benches");
    const Folder folder;
    EXPECT_THAT(
        ReportOf(folder.WriteJson("cell.json", cell)),
        testing::HasSubstr("motions[2]: workpiece \"branch_pipe\" on table, expected a workpiece on a "
                           "bench of the system of welder"));
}

TEST(Follow, WithoutAWayIsRefusedWithStretchAndReasons) {
    Json::Value json = ExampleCell("seam.json");
    json["motions"][2].removeMember("benches");
    json["motions"][2]["spin_deg"] = 0;
    const Folder folder;
    const Cell cell = Cell::Load(folder.WriteJson("cell.json", json));
    EXPECT_THAT(Thrown([&] { PlanMotions(cell, {}); }),
                testing::AllOf(testing::HasSubstr("motions[2]: no way past pose "),
                               testing::HasSubstr(" can be followed, expected paths that can be followed; "),
                               testing::HasSubstr("past the ")));
}

INSTANTIATE_TEST_SUITE_P(
    Follow, BadFollow,
    testing::Values(
        Fault{".motions[2].paths", R"(["nobody"])",
              R"(motions[2].paths[0]: "nobody", expected the name of an earlier motion of kind tool_path)"},
        Fault{".motions[2].paths", "[]", "motions[2].paths: "},
        Fault{".motions[2].tool", "\"glueing\"",
              "motions[2].tool: \"glueing\", expected welding or painting"},
        Fault{".motions[2].lead_deg", "[5, -5]",
              "motions[2].lead_deg: [5,-5], expected two numbers, the lower"},
        Fault{".motions[2].spin_deg", "[]", "motions[2].spin_deg: [], expected two numbers"},
        Fault{".motions[2].benches", R"([["free"]])", "motions[2].benches[0]: 1 entries, expected 2"},
        Fault{".motions[2].benches[0][1]", "\"up\"", "motions[2].benches[0][1]: \"up\", expected a number"},
        Fault{".motions[2].benches[0][0]", R"({"free": [3]})", "motions[2].benches[0][0].free: [3]"},
        Fault{".motions[2].approach_mm", "-1", "motions[2].approach_mm: -1, expected a length from 0"},
        Fault{".motions[2].downhand_deg", "0", "motions[2].downhand_deg: 0, expected"},
        Fault{".motions[2].wiggle", "1", "motions[2].wiggle: unknown key"}));

} // namespace
