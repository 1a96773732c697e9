#include <support/Mechanism.h>

namespace {

TEST(AxisVocabulary, MatchesWholeTextsAndMapsUnknownOnesToTool) {
    const std::pair<const char*, int> texts[] = {{"ARM_J1", 0},     {"ARM_J6", 5},   {"Gantry_X1", 10},
                                                 {"Gantry_Z1", 12}, {"axisX1", 100}, {"axisZ1", 102},
                                                 {"ARM_J0", 6},     {"Pedestal", 6}, {"", 6},
                                                 {"arm_j1", 6},     {"ARM_J12", 6},  {"Gantry_X2", 6}};
    for (const auto& [text, axis] : texts) {
        EXPECT_EQ(StringToAxis(text), axis) << text;
    }
}

std::pair<int, int> IndexOf(const GrpConfig& config, int entity) {
    std::pair<int, int> range{-1, -1};
    config.GetIndex(static_cast<EntityName>(entity), range.first, range.second);
    return range;
}

TEST(GrpConfig, IndexRangesFollowTheLayoutRules) {
    using testing::Pair;
    GrpConfig one;
    one.InitDOF(2, 6, 1, 2);
    EXPECT_EQ(Thrown([&] { IndexOf(one, Bench); }), "invalid vector subscript") << "promised, never set";
    one.SetBenchesDofs({2.0, 2.0});
    EXPECT_THAT(IndexOf(one, Robot), Pair(0, 6));
    EXPECT_THAT(IndexOf(one, 1), Pair(6, 2));
    EXPECT_THAT(IndexOf(one, 7), Pair(6, 2));
    EXPECT_THAT(IndexOf(one, Bench), Pair(8, 2));
    EXPECT_THAT(IndexOf(one, Bench + 1), Pair(10, 2));
    EXPECT_THAT(IndexOf(one, Bench + 2), Pair(-1, -1));
    one.SetBenchesDofs({1.5});
    EXPECT_EQ(one.GetContextDof(), 13) << "the first benches stay counted";

    GrpConfig two;
    two.InitDOF(1, 6, 2, 0);
    two.SetBenchesDofs({1.0, 1.0, 1.5});
    EXPECT_EQ(two.GetContextDof(), 16);
    EXPECT_THAT(IndexOf(two, 1), Pair(6, 6));
    EXPECT_THAT(IndexOf(two, 2), Pair(12, 1));
    EXPECT_THAT(IndexOf(two, Bench), Pair(7, 1)) << "inside the second robot, as ever";
    EXPECT_THAT(IndexOf(two, Bench + 2), Pair(10, 1)) << "twice its own 1.5 and not the sum of those before";
}

TEST(GrpConfig, SystemTypeComparesContextDofWithRobotDof) {
    const Registrar plain(1, {}), rail(2, {.pedestal = 1}), table(3, {.robots = 0, .benches = {2.0}});
    EXPECT_EQ(GrpConfig::GetSystemType(1), 0);
    EXPECT_EQ(GrpConfig::GetSystemType(2), 3);
    EXPECT_EQ(GrpConfig::GetSystemType(3), 4);
}

TEST(GrpConfig, LookupOfAnUnregisteredSystemLogsAndThrows) {
    constexpr std::uint64_t Unknown = 404;
    const std::pair<const char*, void (*)()> lookups[] = {
        {"GrpConfig::GetGrpConfig", [] { GrpConfig::GetGrpConfig(Unknown); }},
        {"GrpConfig::GetContextDof", [] { GrpConfig::GetContextDof(Unknown); }},
        {"GrpConfig::GetRobotAndPedestalDof", [] { GrpConfig::GetRobotAndPedestalDof(Unknown); }},
        {"GrpConfig::GetRobotDof", [] { GrpConfig::GetRobotDof(Unknown); }},
        {"GrpConfig::GetSystemType", [] { GrpConfig::GetSystemType(Unknown); }}};
    for (const auto& [name, lookup] : lookups) {
        ExpectFailure(lookup, "GrpState", name, "当前系统不存在该型号机器人");
    }
    EXPECT_FALSE(GrpConfig::GetGrpConfigList().contains(Unknown));
}

TEST(GrpConfig, NullEntryCountsAsUnregistered) {
    struct NullEntry : GrpConfig {
        NullEntry() { ChangeGrpConfigList()[404] = nullptr; }
        ~NullEntry() { ChangeGrpConfigList().erase(404); }
    };
    const Registrar other(405, {});
    const NullEntry entry;
    ExpectFailure([] { GrpConfig::GetContextDof(404); }, "GrpState", "GrpConfig::GetContextDof",
                  "当前系统不存在该型号机器人");
    EXPECT_THROW(GrpState(404), std::string);
    EXPECT_FALSE(ContextState().HasSystem(404));
    EXPECT_TRUE(ContextState().HasSystem(405));
    GrpState state(405);
    Json::Value json = state.ToJson();
    json["system_index"] = 404;
    EXPECT_EQ(Thrown([&] { state.FromJson(json); }), "invalid map<K, T> key");
}

} // namespace
