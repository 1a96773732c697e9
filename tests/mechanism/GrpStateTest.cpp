#include <csignal>
#include <cstdio>
#include <support/Mechanism.h>

namespace {

using testing::ElementsAre;

constexpr std::uint64_t System = 71;
constexpr auto NoBench = static_cast<EntityName>(Bench + 1);

struct GrpStateTest : testing::Test {
    Registrar registrar{System, {.pedestal = 2, .benches = {1.0}}};
    GrpState state{System};

    void SetUp() override { state.SetValues({1, 2, 3, 4, 5, 6, 7, 8, 9}); }
};

TEST_F(GrpStateTest, HasOnePosePerRobot) {
    LocEuler out;
    state.SetLocEuler(0, {gp_Pnt(1, 1, 1), gp_Pnt()});
    EXPECT_TRUE(state.GetLocEuler(0, out));
    for (const int robot : {-1, 1}) {
        EXPECT_FALSE(state.GetLocEuler(robot, out));
        EXPECT_EQ(Thrown([&] { state.SetLocEuler(robot, out); }), "invalid vector subscript");
        EXPECT_EQ(Thrown([&] { state.GetLocEuler(robot); }), "invalid vector subscript");
    }
    EXPECT_EQ(out.location.X(), 1);
    EXPECT_THROW(GrpState(System + 1), std::string);
    EXPECT_EQ(state.GetBenchDof(), 1);
}

TEST_F(GrpStateTest, CopyingIsDeepAndMovingTransfersTheBuffer) {
    state.SetCmdTypeAndCmd(MoveCmdLogical, "MOVE");
    state.SetLocEuler(0, {gp_Pnt(1, 2, 3), gp_Pnt()});
    GrpState copy(state);
    copy.SetValue(Robot, 0, 50);
    EXPECT_EQ(state.GetValue(Robot, ARM_J1), 1);
    const double* const buffer = copy.GetValuesPtr();
    GrpState moved(std::move(copy));
    EXPECT_EQ(copy.GetValuesPtr(), nullptr);
    EXPECT_EQ(copy.GetSystem(), System);
    EXPECT_EQ(copy.GetLogicalCmd(), "MOVE") << "the text is copied";
    EXPECT_EQ(copy.GetLocEuler(0).location.Y(), 2) << "poses are copied";
    state = std::move(moved);
    GrpState& self = state;
    state = self;
    state = std::move(self);
    EXPECT_EQ(state.GetValuesPtr(), buffer);

    const GrpState unbound;
    copy = state;
    copy = unbound;
    state = GrpState();
    for (const GrpState* target : {&state, &copy}) {
        EXPECT_EQ(target->GetValuesPtr(), nullptr);
        EXPECT_EQ(target->GetLogicalCmd(), "MOVE") << "an unbound source takes system and buffer only";
    }
}

TEST_F(GrpStateTest, OnlyALogicalCommandReplacesTheText) {
    state.SetCmdTypeAndCmd(MoveCmdLogical, "MOVE");
    state.SetCmdTypeAndCmd(static_cast<RobotMoveCmdType>(1), "WAIT");
    EXPECT_EQ(state.GetLogicalCmd(), "MOVE");
}

TEST_F(GrpStateTest, EntityAccessReadsAndWritesItsRange) {
    EXPECT_THAT(state.GetValues(Pedestal), ElementsAre(7, 8));
    EXPECT_EQ(state.GetValue(Pedestal, Gantry_Y1), 8);
    EXPECT_EQ(state.GetValue(NoBench, axisZ1), 3) << "no such bench counts from 0";
    state.SetValue(Pedestal, 1, 5.0);
    state.SetValue(Bench, 0, 1.0);
    state.SetValues(Bench, {});
    state.SetValues(NoBench, {1.0});
    const double one = 1;
    state.SetValues(NoBench, &one, 1);
    EXPECT_TRUE(state.GetValues(NoBench).empty());
    const double first[] = {10, 20};
    state.SetValues(Robot, first, 2);
    EXPECT_THAT(state.GetValues(), ElementsAre(10, 20, 3, 4, 5, 6, 7, 5, 9));

    const Registrar uneven(System + 1, {.benches = {1.0, 3.0}});
    GrpState other(System + 1);
    other.SetValues(NoBench, {7, 8, 9});
    EXPECT_THAT(other.GetValues(), ElementsAre(0, 0, 0, 0, 0, 0, 0, 0, 0, 7)) << "cut at the buffer's end";

    const Registrar crowd(System + 2, {.joints = 1, .robots = 9});
    GrpState many(System + 2);
    many.SetValue(static_cast<EntityName>(8), 0, 3); // the ninth robot, not a bench
    many.SetValue(static_cast<EntityName>(9), 0, 4);
    EXPECT_EQ(many.GetValues(), std::vector<double>({0, 0, 0, 0, 0, 0, 0, 0, 3}));

    state.AddOtherValues(other);
    state.AddOtherValues(std::vector<double>(8, 100));
    state.AddOtherValues(std::vector<double>(9, 100));
    EXPECT_EQ(state.GetValue(Robot, ARM_J3), 6) << "doubled, whatever the vector holds";
    state.AddOtherValues(GrpState(state));
    EXPECT_EQ(state.GetValue(Bench, axisX1), 36);
}

TEST_F(GrpStateTest, CopyWithoutSourceOrRoomClearsTheRangeAndAborts) {
    GrpState gone(state);
    const GrpState taker(std::move(gone));
    static const double* values = state.GetValuesPtr();
    std::signal(SIGABRT,
                [](int) { std::fprintf(stderr, "left %g %g %g\n", values[0], values[5], values[7]); });
    EXPECT_DEATH(state.SetValues({}), "left 0 0 0");
    EXPECT_DEATH(state.SetValuesByState(gone), "left 0 0 0");
    EXPECT_DEATH(state.SetValues(Pedestal, values, 3), "left 1 6 0");
    std::signal(SIGABRT, SIG_DFL);
    EXPECT_DEATH(GrpState{gone}, "cannot copy 9 values from nowhere");
}

} // namespace
