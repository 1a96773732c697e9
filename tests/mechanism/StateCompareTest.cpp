#include <support/Mechanism.h>

namespace {

using testing::ElementsAre;

constexpr std::uint64_t System = 31;

struct StateCoupling : testing::Test {
    /// The seventh value follows half the sixth in the opposite sense.
    void SetUp() override {
        for (int i = 0; i < 6; ++i) {
            coupling.index[i] = i;
        }
        coupling.skip[6] = -1;
        coupling.ratio[6] = -0.5;
        coupling.enabled = true;
        state.SetValues({1, 2, 3, 4, 5, 6, -3, 9});
    }

    Registrar registrar{System, {.pedestal = 1, .joints = 7}};
    GrpState state{System};
    CoupedValue& coupling = GrpConfig::GetCoupledValue(System);
};

TEST_F(StateCoupling, CoupledFormOmitsAndRestoresFollowers) {
    EXPECT_THAT(state.GetValuesCoupling(), ElementsAre(1, 2, 3, 4, 5, 6));
    state.SetValuesCoupling({10, 20, 30, 40, 50, 60, 70});
    EXPECT_THAT(state.GetValues(), ElementsAre(10, 20, 30, 40, 50, 60, -30, 70));
    coupling.index[0] = 100000;
    EXPECT_TRUE(state.GetValuesCoupling().empty());
    EXPECT_THROW(state.SetValuesCoupling({1, 2}), std::out_of_range);
}

TEST_F(StateCoupling, RobotFormIsBoundedByRobotValueCount) {
    coupling.robotValueCount = 3;
    EXPECT_THAT(state.GetValuesCoupling(Robot), ElementsAre(1, 2, 3));
    state.SetValuesCoupling(Robot, {});
    state.SetValuesCoupling(Robot, {7, 8, 9});
    state.SetValuesCoupling(Pedestal, {5});
    EXPECT_THAT(state.GetValues(), ElementsAre(7, 8, 9, 4, 5, 6, -3, 5));
}

TEST_F(StateCoupling, LookupCreatesADisabledRecord) {
    GrpConfig::ChangeCoupledList().erase(System);
    EXPECT_THAT(state.GetValuesCoupling(Pedestal), ElementsAre(9));
    EXPECT_FALSE(GrpConfig::ChangeCoupledList().contains(System));
    EXPECT_EQ(state.GetValuesCoupling(), state.GetValues());
    EXPECT_THAT(GrpConfig::ChangeCoupledList().at(System).ratio, testing::Each(1.0));
    EXPECT_THAT(GrpConfig::ChangeCoupledList().at(System).index, testing::Each(100000));
}

TEST(StateComparison, TolerancesApplyPerValueKind) {
    const Registrar registrar(System, {.pedestal = 1, .benches = {1.0}});
    const struct {
        int index;
        double difference;
        bool identical, simulated, shown;
    } cases[] = {{0, 1e-7, true, true, true},    {0, -2e-7, false, true, true},
                 {5, 0.0001, false, true, true}, {5, 0.00011, false, false, false},
                 {6, -0.1, false, true, true},   {6, 0.11, false, false, true},
                 {6, 1.0, false, false, true},   {6, 1.01, false, false, false},
                 {7, 0.05, false, false, false}, {3, std::nan(""), true, true, true}};
    for (const auto& [index, difference, identical, simulated, shown] : cases) {
        const GrpState a(System);
        GrpState b(System);
        b.GetValuesPtr()[index] = difference;
        const bool results[] = {a == b, !(a != b), a.IsEqualForSimu(b), b.IsEqualForCollisonShow(a)};
        EXPECT_THAT(results, ElementsAre(identical, identical, simulated, shown))
            << index << ": " << difference;
    }
}

TEST(StateComparison, EqualityComparesSystemsValuesAndPosesOnly) {
    const Registrar one(System, {.robots = 2}), two(System + 1, {.robots = 2});
    const GrpState a(System), stranger(System + 1);
    GrpState b(System);
    b.SetToolIndex(4);
    EXPECT_TRUE(a == b);
    b.SetLocEuler(1, {gp_Pnt(0, 0, 1e-6), gp_Pnt()});
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a.IsEqual(b, 0) && a.IsEqual(stranger, 0));
    EXPECT_FALSE(a == stranger || a.IsEqualForSimu(stranger));
    EXPECT_FALSE(GrpState::IsEqual({1.0}, {1.0, 2.0}, 10));
    EXPECT_FALSE(GrpState::IsEqual({1.0, 2.0}, {1.0, 2.5}, 0.4));
    EXPECT_FALSE(GrpState::IsEqual({1.5, 2.0}, {1.0, 2.0}, 0.4));
}

TEST(StateScale, LinearStepsFollowTheFirstRobotsValues) {
    const Registrar rails(System, {.pedestal = 2, .joints = 2, .robots = 2});
    const double angular = 0.017453292519943295;
    EXPECT_THAT(GrpState(System).GetScaleValues(10), ElementsAre(angular, angular, 10, 10, angular, angular));
}

} // namespace
