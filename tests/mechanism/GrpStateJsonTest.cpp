#include <cstring>
#include <random>
#include <support/Mechanism.h>

namespace {

constexpr std::uint64_t System = 0xF123456789ABCDEFU;

struct GrpStateJsonTest : testing::Test {
    Registrar registrar{System, {.pedestal = 1}};
    GrpState state{System};
};

TEST_F(GrpStateJsonTest, RoundTripThroughTextIsExact) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> mantissa(-1, 1);
    const auto number = [&] { return std::ldexp(mantissa(random), static_cast<int>(random() % 600) - 300); };
    GrpState back(System);
    for (int i = 0; i < 10000; ++i) {
        state.SetValues({number(), number(), number(), number(), number(), number(), number()});
        state.SetLocEuler(0, {gp_Pnt(number(), number(), number()), gp_Pnt(number(), number(), number())});
        state.SetOffset(static_cast<float>(mantissa(random)));
        state.SetToolIndex(static_cast<unsigned short>(random()));
        state.SetNeedExport(i % 2 == 0);
        state.SetCmdTypeAndCmd(MoveCmdLogical, "指令\"\\\n" + std::to_string(i));
        ASSERT_TRUE(back.FromJson(ThroughText(state.ToJson())));
        const LocEuler &pose = state.GetLocEuler(0), &poseBack = back.GetLocEuler(0);
        ASSERT_EQ(std::memcmp(state.GetValuesPtr(), back.GetValuesPtr(), 7 * sizeof(double)), 0);
        ASSERT_EQ(std::memcmp(&pose, &poseBack, sizeof(LocEuler)), 0);
        ASSERT_EQ(state.ToJson(), back.ToJson()) << "the other fields are written as they are";
    }
}

TEST_F(GrpStateJsonTest, MissingAndShortMembersTakeTheirDefaults) {
    state.SetValues({5, 0, 0, 0, 0, 0, 4});
    state.SetToolIndex(9);
    EXPECT_FALSE(state.FromJson(Json::Value()));
    Json::Value json;
    json["system_index"] = static_cast<Json::UInt64>(System);
    EXPECT_TRUE(state.FromJson(json));
    EXPECT_FALSE(state.NeedExport());
    EXPECT_EQ(state.GetToolIndex(), 0);

    json["J_value"].resize(6);
    json["tcp_value"][0] = LocEulerToJson({gp_Pnt(1, 2, 3), gp_Pnt()}, 6);
    json["ToolIndex"] = 65537;
    EXPECT_TRUE(state.FromJson(json));
    EXPECT_EQ(state.GetValue(Robot, ARM_J1), 5) << "too short an array";
    EXPECT_EQ(state.GetLocEuler(0).location.Z(), 3);
    EXPECT_EQ(state.GetToolIndex(), 1);
    json["J_value"].resize(9);
    json.removeMember("tcp_value");
    EXPECT_TRUE(state.FromJson(json));
    EXPECT_EQ(state.GetValue(Pedestal, Gantry_X1), 0);
    EXPECT_TRUE(state.GetLocEuler(0) == LocEuler());

    json["J_value"] = 3;
    json["tcp_value"][0] = LocEulerToJson({gp_Pnt(1, 2, 3), gp_Pnt()}, 6);
    EXPECT_TRUE(state.FromJson(json));
    EXPECT_TRUE(state.GetLocEuler(0) == LocEuler()) << "no array, no poses";
    json["ToolIndex"] = -1;
    EXPECT_THROW(state.FromJson(json), Json::Exception);
}

TEST_F(GrpStateJsonTest, UnregisteredSystemThrowsAfterValuesAreRead) {
    Json::Value json = state.ToJson();
    json["J_value"][0] = 8;
    json["system_index"] = 5;
    json["ToolIndex"] = 4;
    EXPECT_EQ(Thrown([&] { state.FromJson(json); }), "invalid map<K, T> key");
    EXPECT_EQ(state.GetSystem(), 5U);
    EXPECT_EQ(state.GetValue(Robot, ARM_J1), 8);
    EXPECT_EQ(state.GetToolIndex(), 0);
    EXPECT_EQ(state.GetContextDof(), 7) << "still the old layout";

    const Registrar pair(6, {.robots = 2});
    GrpState two(6), twoBack(6);
    two.SetLocEuler(1, {gp_Pnt(1, 2, 3), gp_Pnt()});
    twoBack.FromJson(two.ToJson());
    EXPECT_TRUE(twoBack == two);

    const Registrar empty(5, {.robots = 0});
    EXPECT_TRUE(GrpState(5).ToJson()["J_value"].isNull() && GrpState(5).ToJson()["tcp_value"].isNull());
}

} // namespace
