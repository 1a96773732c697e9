#include "../cell/Documents.h"

#include <app/commands/Commands.h>
#include <cell/Planner.h>
#include <cell/model/SystemValues.h>
#include <cell/plan/StateFile.h>
#include <cmath>
#include <host/tools/gpHandle.h>

using namespace cell;

namespace {

/// Joint motion between neighbouring states 5 mm of chord apart leaves the chord by less than this factor.
constexpr double Bulge = 1.25;
constexpr double Gap = 5;

std::vector<PlannedMotion> Planned(const Cell& cell) {
    return PlanMotions(cell, [](std::size_t, std::size_t) {});
}

struct PlanTest : testing::Test {
    const Cell cell = Cell::Load(Example("cells/arc_welding.json"));
    std::vector<PlannedMotion> plan = Planned(cell);
};

} // namespace

TEST_F(PlanTest, TraceReadsBackToTheBit) {
    const Folder folder;
    folder.Write("trace.json", "an older trace");
    std::ostringstream table;
    Plan({Example("cells/arc_welding.json"), folder.path}, table);
    const Json::Value trace = ReadDocument(folder.path / "trace.json");
    ASSERT_EQ(trace["motions"].size(), plan.size());
    for (Json::ArrayIndex m = 0; m < trace["motions"].size(); ++m) {
        const Json::Value& states = trace["motions"][m]["states"];
        std::vector<GrpState>& planned = plan[m].states;
        ASSERT_EQ(states.size(), planned.size());
        for (Json::ArrayIndex i = 0; i < states.size(); ++i) {
            GrpState read(planned[i].GetSystem());
            ASSERT_TRUE(read.FromJson(states[i]));
            ASSERT_EQ(read.ToJson(), planned[i].ToJson()) << "motion " << m << ", state " << i;
        }
        EXPECT_THAT(table.str(), testing::HasSubstr(trace["motions"][m]["name"].asString()));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path), {}), 1)
        << "something was left over";
}

TEST_F(PlanTest, MotionsPassTheirKeyStatesWithinTheirSteps) {
    for (PlannedMotion& planned : plan) {
        std::size_t key = 0;
        for (GrpState& state : planned.states) {
            GrpState wanted = planned.motion->keys[std::min(key, planned.motion->keys.size() - 1)].state;
            key += state.GetValues() == wanted.GetValues() ? 1U : 0U;
        }
        EXPECT_EQ(key, planned.motion->keys.size()) << planned.motion->name;
    }
    const PlannedMotion& weld = plan.back();
    for (std::size_t i = 1; i < weld.tcpPath.size(); ++i) {
        EXPECT_LE(weld.tcpPath[i].Distance(weld.tcpPath[i - 1]), Bulge * Gap) << "state " << i;
    }
}

TEST(PlanPoses, AreTheToolCentresOfTheirValuesInEveryStateOfEveryCell) {
    constexpr double Same = 1e-6; // mm
    constexpr double SameEntry = 1e-9;
    for (const char* name : {"arc_welding", "painting", "rail_and_positioner", "two_robots"}) {
        const Cell cell = Cell::Load(Example("cells") / (std::string(name) + ".json"));
        for (PlannedMotion& planned : Planned(cell)) {
            for (GrpState& state : planned.states) {
                MoveTo(*planned.motion->system, state);
                const gp_Trsf carried = gpHandle::EulerToTrsf(state.GetLocEuler(0));
                const gp_Trsf tcp = planned.motion->system->robot->GetCurrentTrsfTCP();
                ASSERT_LE((carried.TranslationPart() - tcp.TranslationPart()).Modulus(), Same)
                    << name << ", " << planned.motion->name;
                for (int row = 1; row <= 3; ++row) {
                    const gp_XYZ off = carried.HVectorialPart().Row(row) - tcp.HVectorialPart().Row(row);
                    ASSERT_LE(off.Modulus(), SameEntry) << name << ", " << planned.motion->name;
                }
            }
        }
    }
}

TEST_F(PlanTest, StateFilesAreReadFromStatesAndTraces) {
    const Folder folder;
    GrpState last = plan.back().states.back();
    const auto trace = folder.WriteJson("trace.json", TraceToJson(cell, plan));
    EXPECT_TRUE(LoadStates(trace, cell).at(0) == last);
    GrpState first = plan.front().states.front();
    EXPECT_TRUE(LoadStates(folder.WriteJson("state.json", first.ToJson()), cell).at(0) == first);
    Json::Value stranger = first.ToJson();
    stranger["system_index"] = 99;
    EXPECT_THROW(LoadStates(folder.WriteJson("stranger.json", stranger), cell), std::runtime_error);
}

TEST(PlanRail, ArmRailAndPositionerMoveTogether) {
    const Cell rail = Cell::Load(Example("cells/rail_and_positioner.json"));
    std::vector<PlannedMotion> motions = Planned(rail);
    std::vector<GrpState>& approach = motions.front().states;
    ASSERT_EQ(approach.front().GetContextDof(), 6 + 1 + 2);
    const GrpState half = approach[approach.size() / 3];
    for (const int i : {1, 6, 7, 8}) { // the arm's second joint, the rail and both axes of the positioner
        EXPECT_GT(std::abs(half.GetValuesPtr()[i] - approach.front().GetValuesPtr()[i]), 0.05)
            << "value " << i;
    }
    MoveToStep(rail, motions.front(), approach.size() / 3);
    EXPECT_DOUBLE_EQ(rail.Find("welder")->GetRootMdlTrsf().TranslationPart().Y(),
                     125 + half.GetValuesPtr()[6]);
    EXPECT_EQ(motions.back().removed, 1U) << "the weld names its last state twice";
}

TEST_F(PlanTest, TheWayBackIsNoRepetition) {
    const Folder folder;
    Json::Value json = ExampleCell("arc_welding.json");
    for (const char* name : {"above_start", "home"}) {
        json["motions"][0]["states"].append(name);
    }
    const Cell back = Cell::Load(folder.WriteJson("cell.json", json));
    EXPECT_EQ(Planned(back).front().states.size(), 2 * plan.front().states.size() - 1);
}

TEST(PlanTogether, SystemsArriveAtOnceAndAreReadBack) {
    const Cell two = Cell::Load(Example("cells/two_robots.json"));
    std::vector<PlannedMotion> motions = Planned(two);
    PlannedMotion& both = motions.back();
    ASSERT_EQ(both.Steps(), std::max(motions[0].Steps(), motions[1].Steps()));
    for (const std::size_t i : {0U, 1U}) {
        const std::uint64_t system = motions[i].motion->system->Hash();
        EXPECT_TRUE(both.contexts.front().GetValues(system) == motions[i].states.front());
        EXPECT_TRUE(both.contexts.back().GetValues(system) == motions[i].states.back());
    }
    const Folder folder;
    const auto trace = folder.WriteJson("trace.json", TraceToJson(two, motions));
    std::vector<GrpState> states = LoadStates(trace, two);
    ASSERT_EQ(states.size(), 2U);
    EXPECT_TRUE(states[0] == both.contexts.back().GetValues(states[0].GetSystem()));
}

TEST(FkTest, NothingIsPrintedUnlessEveryLineIsGood) {
    const FkRequest request{Example("arms/kuka_kr16_2.json"), "", std::nullopt};
    std::ostringstream out;
    std::ostringstream nowhere;
    std::istringstream good("0 0 0 0 0 0\n\n1, 2, 3, 4, 5, +6e0\n");
    Fk(request, good, out, nowhere);
    const std::string lines = out.str();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
    for (const char* bad :
         {"0 0 0 0 0 0\n1 2 3\n", "0 0 0 0 0 nan\n", "0 0 0 0 0 1e999\n", "0,0,0,0,0,0x\n", ""}) {
        std::ostringstream nothing;
        std::istringstream in(bad);
        EXPECT_THROW(Fk(request, in, nothing, nowhere), std::runtime_error) << bad;
        EXPECT_EQ(nothing.str(), "") << bad;
    }
}
