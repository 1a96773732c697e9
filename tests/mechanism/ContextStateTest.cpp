#include <support/Mechanism.h>

namespace {

struct ContextStateTest : testing::Test {
    Registrar small{5, {}};
    Registrar large{9, {.pedestal = 1}};
    ContextState context;
};

TEST_F(ContextStateTest, HoldsRegisteredSystemsAndFallsBackToTheFirst) {
    context.ChangeValues(7).SetValue(Robot, 0, 1.5);
    EXPECT_EQ(context.GetValues(5).GetValue(Robot, ARM_J1), 1.5);
    context.SetValues(7, GrpState(9));
    EXPECT_EQ(context.GetSystemValues().size(), 2U);
    EXPECT_FALSE(context.HasSystem(7));
}

TEST_F(ContextStateTest, ComparisonIsOneSidedWithAFixedTolerance) {
    ContextState other(context);
    other.ChangeValues(9).SetValue(Robot, 2, 1e-6);
    EXPECT_TRUE(context.IsEqual(other, 0));
    other.ChangeValues(9).SetValue(Robot, 2, 1e-5);
    EXPECT_FALSE(context.IsEqual(other, 100));
    EXPECT_TRUE(context.IsEqualForSimu(other));
    other.ChangeValues(9).SetValue(Pedestal, 0, 0.5);
    EXPECT_FALSE(context.IsEqualForSimu(other));
    EXPECT_TRUE(context.IsEqualForCollisonShow(other));
    other.ChangeSystemValues().erase(9);
    EXPECT_TRUE(other.IsEqual(context, 0));
    EXPECT_EQ(Thrown([&] { context.IsEqual(other, 0); }), "invalid map<K, T> key");
}

TEST_F(ContextStateTest, WritesSystemsAndReadsSystem) {
    context.ChangeValues(9).SetValue(Robot, 0, 2.5);
    const Json::Value json = ThroughText(context.ToJson());
    ContextState back;
    EXPECT_FALSE(back.FromJson(json));
    EXPECT_FALSE(back.FromJson(Json::Value()));
    Json::Value document;
    for (const Json::Value& nothing : {Json::Value(3), Json::Value(Json::arrayValue)}) {
        document["system"] = nothing;
        EXPECT_TRUE(back.FromJson(document));
        EXPECT_TRUE(back.GetValues(9) == GrpState(9));
    }
    document["system"] = json["systems"];
    EXPECT_TRUE(context.IsEqual(ContextState(document), 0));

    document["system"][2] = document["system"][1];
    document["system"][2]["Data"]["J_value"][0] = 4;
    document["system"][3]["SystemIndex"] = 6;
    EXPECT_THROW(back.FromJson(document), std::string);
    EXPECT_EQ(back.GetValues(9).GetValue(Robot, ARM_J1), 4) << "the later entry, merged before the failure";
}

TEST_F(ContextStateTest, TraceAppendsAndSelfAssignmentEmptiesIt) {
    TracePair trace(std::vector<GrpState>(3, GrpState(5)), static_cast<TraceType>(2));
    trace.setTrace(trace.trace);
    TracePair copy(trace);
    EXPECT_EQ(copy.trace.size(), 6U);
    const TracePair& self = copy;
    copy = self;
    EXPECT_TRUE(copy.trace.empty() && copy.type == 2);
}

} // namespace
