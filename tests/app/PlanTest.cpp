#include "Documents.h"

#include <cell/Commands.h>
#include <cell/JointValues.h>
#include <cell/Planner.h>
#include <cell/StateFile.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using namespace cell;

namespace {

constexpr double PoseTolerance = 1e-9; // mm: the same kinematics on the same values
/// Joint motion between neighbouring states 5 mm of chord apart leaves the chord by less than this factor.
constexpr double Bulge = 1.25;
constexpr double Gap = 5;

struct PlanTest : testing::Test {
    const Cell cell = Cell::Load(Example("cells/arc_welding.json"));
    std::vector<PlannedMotion> plan = PlanMotions(cell, [](std::size_t, std::size_t) {});
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
            ASSERT_EQ(read.GetValues(), planned[i].GetValues()) << "motion " << m << ", state " << i;
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

TEST_F(PlanTest, StatesOfJointStepsCarryTheToolCentreOfTheirValues) {
    PlannedMotion& approach = plan.front();
    for (GrpState& state : approach.states) {
        MoveTo(*approach.motion->robot, state.GetValues(Robot));
        const gp_Pnt tcp = approach.motion->robot->GetCurrentTCP().location;
        EXPECT_LE(state.GetLocEuler(0).location.Distance(tcp), PoseTolerance);
    }
}

TEST_F(PlanTest, StateFilesAreReadFromStatesAndTraces) {
    const Folder folder;
    GrpState last = plan.back().states.back();
    const auto trace = folder.Write("trace.json", ToText(TraceToJson(cell, plan)));
    EXPECT_TRUE(LoadState(trace, cell) == last);
    GrpState first = plan.front().states.front();
    EXPECT_TRUE(LoadState(folder.Write("state.json", ToText(first.ToJson())), cell) == first);
    Json::Value stranger = first.ToJson();
    stranger["system_index"] = 99;
    EXPECT_THROW(LoadState(folder.Write("stranger.json", ToText(stranger)), cell), std::runtime_error);
}

TEST(FkTest, NothingIsPrintedUnlessEveryLineIsGood) {
    const FkRequest request{Example("arms/kuka_kr16_2.json"), "", std::nullopt};
    std::ostringstream out;
    std::istringstream good("0 0 0 0 0 0\n\n1, 2, 3, 4, 5, +6e0\n");
    Fk(request, good, out);
    const std::string lines = out.str();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 2);
    for (const char* bad :
         {"0 0 0 0 0 0\n1 2 3\n", "0 0 0 0 0 nan\n", "0 0 0 0 0 1e999\n", "0,0,0,0,0,0x\n", ""}) {
        std::ostringstream nothing;
        std::istringstream in(bad);
        EXPECT_THROW(Fk(request, in, nothing), std::runtime_error) << bad;
        EXPECT_EQ(nothing.str(), "") << bad;
    }
}
