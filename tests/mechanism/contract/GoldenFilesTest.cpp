#include <filesystem>
#include <fstream>
#include <support/Mechanism.h>

// Documents of earlier versions stay readable with unchanged meaning.

namespace {

Json::Value Golden(const char* name) {
    std::ifstream file(std::filesystem::path(TEST_DATA) / name);
    return Parsed({std::istreambuf_iterator<char>(file), {}});
}

TEST(GoldenFiles, RobotOfAnEarlierVersionIsRead) {
    RobotEntity robot{sample::Build(sample::SixAxisArm(), 1).get()};
    robot.LoadFromJson(Golden("robot.json"));
    EXPECT_EQ(robot.GetHashIndex(), 16045690984503098046U);
    EXPECT_EQ(robot.GetRootMdl()->GetId().ToString(), "0f1e2d3c-4b5a-6978-8796-a5b4c3d2e1f0");
    EXPECT_EQ(robot.GetToolIndex(), 1);
    EXPECT_NEAR(robot.GetCurrentTool().TranslationPart().Z(), 325.5, 1e-12);
    EXPECT_NEAR(robot.GetLink(2)->GetLimit().first, -1.5, 1e-9);
    EXPECT_NEAR(robot.GetArmDH()[2][0], 600, 1e-9);
}

TEST(GoldenFiles, ToolOfAnEarlierVersionIsRead) {
    const auto tool = ToolEntity::CreateToolEntityByParameter(Golden("tool_parameters.json")).second;
    tool->LoadFromJson(Golden("tool.json"));
    EXPECT_EQ(tool->GetToolWorkType(), ToolEntity::WorkTypePainting);
    EXPECT_EQ(tool->GetHashIndex(), 808U);
    EXPECT_EQ(tool->GetEndToolMdl(), tool->GetFixMdls()[0]);
}

TEST(GoldenFiles, StateOfAnEarlierVersionIsRead) {
    const Registrar registrar(2001, {.pedestal = 1});
    GrpState state(2001);
    ASSERT_TRUE(state.FromJson(Golden("state.json")));
    EXPECT_EQ(ThroughText(state.ToJson()), Golden("state.json"));
    EXPECT_EQ(state.GetValue(Pedestal, Gantry_X1), 1234.5);
    EXPECT_EQ(state.GetLocEuler(0).location.Y(), -250.125);
    EXPECT_EQ(state.GetLogicalCmd(), "WAIT 1");
    EXPECT_EQ(state.GetToolIndex(), 3);
    EXPECT_EQ(state.GetOffset(), 2.5F);
    EXPECT_FALSE(state.NeedExport());
    EXPECT_TRUE(state.IsValidWorkState());
}

} // namespace
