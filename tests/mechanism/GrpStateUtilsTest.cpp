#include <support/Mechanism.h>

namespace {

using testing::ElementsAre;

constexpr std::uint64_t System = 41;

struct Sequences : testing::Test {
    static GrpState State(const std::vector<double>& values) {
        GrpState state(System);
        state.SetValues(values);
        return state;
    }
    static std::vector<double> Thinned(const std::vector<double>& path) {
        std::vector<GrpState> states;
        for (const double value : path) {
            states.push_back(State({value, 0}));
        }
        std::vector<double> values;
        for (const GrpState& state : GrpStateUtils::RemoveDuplicatedStates(states, 1e-6)) {
            values.push_back(state.GetValuesPtr()[0]);
        }
        return values;
    }

    const Registrar registrar{System, {.joints = 2}};
};

TEST_F(Sequences, ThinningDropsRepetitionsAndExcursionsAndKeepsTheEnd) {
    EXPECT_THAT(Thinned({0, 1e-7, 1, 2, 2 + 1e-7}), ElementsAre(0, 1, 2 + 1e-7));
    EXPECT_THAT(Thinned({0, 1, 0, 5}), ElementsAre(0, 5));
    EXPECT_THAT(Thinned({0, 1, 2, 1, 0, 5}), ElementsAre(0, 5)) << "excursions nest";
    EXPECT_THAT(Thinned({0, 1, 0}), ElementsAre(0, 0));
    EXPECT_THAT(Thinned({3}), ElementsAre(3, 3));
    EXPECT_THAT(Thinned({0, 6e-7, 1.2e-6, 5}), ElementsAre(0, 1.2e-6, 5)) << "measured from what is kept";
    EXPECT_TRUE(Thinned({}).empty());
    EXPECT_EQ(GrpStateUtils::RemoveDuplicatedStates(std::vector<GrpState>(3), 1).size(), 2U);
    EXPECT_EQ(Thinned({0, std::nan(""), std::nan(""), 1}).size(), 4U) << "NaN is never a repetition";
}

TEST_F(Sequences, ContextThinningIgnoresTheTolerance) {
    std::vector<ContextState> contexts(4);
    contexts[1].ChangeValues(System).GetValuesPtr()[0] = 1e-5;
    contexts[2].ChangeValues(System).GetValuesPtr()[0] = 1e-5 + 1e-7;
    contexts[3].ChangeValues(System).GetValuesPtr()[0] = 1;
    const auto thinned = GrpStateUtils::RemoveDuplicatedStates(contexts, 100);
    ASSERT_EQ(thinned.size(), 3U);
    EXPECT_EQ(thinned[1].GetValues(System).GetValuesPtr()[0], 1e-5);
    const Registrar other(System + 1, {});
    contexts.emplace_back().SetValues(System, contexts[3].GetValues(System));
    EXPECT_EQ(Thrown([&] { GrpStateUtils::RemoveDuplicatedStates(contexts, 1); }), "invalid map<K, T> key");
}

TEST_F(Sequences, SortingOrdersByDistanceToTheReference) {
    const GrpState reference(System);
    std::vector<GrpState> states = {State({3, 0}), State({-2, 0}), State({std::nan(""), 0}), State({1, 5})};
    states[3].SetToolIndex(7);
    GrpStateUtils::SortRobotStateJ(reference, states, 3); // more than the reference has: no change
    ASSERT_EQ(states[0].GetValuesPtr()[0], 3);
    GrpStateUtils::SortRobotStateJ(reference, states, 1);
    EXPECT_THAT(states[0].GetValues(), ElementsAre(1, 5)) << "by the first value alone";
    GrpStateUtils::SortRobotStateJ(reference, states, 2);
    EXPECT_THAT(states[0].GetValues(), ElementsAre(-2, 0));
    EXPECT_THAT(states[1].GetValues(), ElementsAre(3, 0));
    EXPECT_EQ(states[2].GetToolIndex(), 7) << "everything travels with the values";
    const Registrar small(System + 1, {.joints = 1});
    states.emplace_back(System + 1);
    EXPECT_THROW(GrpStateUtils::SortRobotStateJ(reference, states, 2), std::invalid_argument);
}

} // namespace
