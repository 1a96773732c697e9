#include <gtest/gtest.h>
#include <host/tools/CADParamConfig.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/ToolEntity.h>
#include <support/SampleMechanisms.h>
#include <support/SampleTools.h>
#include <support/TrsfMatcher.h>

namespace {

constexpr double Mm = 1e-9;
constexpr double Entries = 1e-12;

class MountedTool : public testing::Test {
protected:
    MountedTool() { torch->Initial(); }

    void Mount() {
        Json::Value place;
        place["link_hash"] = Json::UInt64(robot.GetEndLink(0)->linkHash);
        place["install_index"] = 0;
        robot.AssembleOtherModel(torch.get(), place);
    }

    const sample::Mechanism arm = sample::SixAxisArm();
    RobotEntity robot{sample::Build(arm, 5).get()};
    std::shared_ptr<ToolEntity> torch =
        ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
};

TEST_F(MountedTool, TakesTheFirstEmptySlotAndJoinsTheRobotsSystem) {
    torch->AddSystem(99);
    EXPECT_EQ(robot.GetToolEntity(), nullptr);
    Mount();
    EXPECT_EQ(robot.GetToolEntity(), torch.get());
    EXPECT_EQ(robot.GetToolIndex(), 0);
    EXPECT_THAT(robot.GetCurrentTool(), IsTrsf(torch->GetToolTrsf(), 0, 0));
    EXPECT_EQ(torch->GetSystems(), std::set<std::uint64_t>{5});
    robot.UpdateAssembleData();
    EXPECT_EQ(robot.GetToolIndex(), 1) << "the slot is taken by then";
    EXPECT_EQ(robot.GetTools().size(), 2U);
}

TEST_F(MountedTool, MovesWithTheFlangeAndGivesTheToolCentre) {
    Mount();
    const std::vector<double> values = {0.4, 0.3, -0.6, 1.2, 0.7, -2.0};
    robot.SetCurrentValue(values, 5);
    robot.ForwardTrsf(5, true, true);
    const gp_Trsf flange = arm.FlangeAt(values);
    EXPECT_THAT(torch->GetRootMdlTrsf(), IsTrsf(flange, Mm, Entries));
    EXPECT_THAT(robot.GetCurrentTrsfTCP(), IsTrsf(flange * torch->GetToolTrsf(), Mm, Entries));
    EXPECT_THAT(torch->GetFixMdls()[0]->Transformation(), IsTrsf(flange, Mm, Entries))
        << "parts follow their root";

    const auto [parts, second] = robot.GetZeroToolAndTrsf();
    EXPECT_EQ(parts.size(), 3U);
    EXPECT_THAT(second, IsTrsf(torch->GetToolTrsf().Inverted(), Mm, Entries));
}

TEST_F(MountedTool, ResettingPutsItsPartsToTheZeroPoseAndTheRobotBack) {
    robot.ResetToolPosition();
    Mount();
    const std::vector<double> values = {0.4, 0.3, -0.6, 1.2, 0.7, -2.0};
    robot.SetCurrentValue(values, 5);
    robot.ForwardTrsf(5, true, true);
    robot.ResetToolPosition();
    EXPECT_EQ(robot.GetCurrentValue(0), values);
    EXPECT_THAT(robot.GetCurrentTrsfTool0(), IsTrsf(arm.FlangeAt(values), Mm, Entries));
    EXPECT_THAT(torch->GetFixMdls()[0]->LocalTransformation(), IsTrsf(arm.flange, Mm, Entries));
}

TEST_F(MountedTool, SharesTheRobotsCollisionState) {
    Mount();
    robot.SetCurrentCollisionState(CollisionWide);
    EXPECT_EQ(torch->GetCheckCollisionGap(), 20.0);
    CADParamConfig::GetInstance()->defaultCollisionGap = 4.0;
    robot.SetCurrentCollisionState(CollisionNormal);
    EXPECT_EQ(torch->GetCheckCollisionGap(), 4.0);
}

} // namespace
