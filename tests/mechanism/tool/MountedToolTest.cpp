#include <support/Mechanism.h>

namespace {

class MountedTool : public testing::Test {
protected:
    MountedTool() {
        torch->Initial();
        torch->AddSystem(99);
        robot.ResetToolPosition(); // without effect on a robot without a tool
        robot.AssembleOtherModel(torch.get(), sample::Place(robot.GetEndLink(0)->linkHash, 0));
    }

    const sample::Mechanism arm = sample::SixAxisArm();
    const std::vector<double> values = {0.4, 0.3, -0.6, 1.2, 0.7, -2.0};
    const gp_Trsf flange = arm.FlangeAt(values);
    RobotEntity robot{sample::Build(arm, 5).get()};
    std::shared_ptr<ToolEntity> torch =
        ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
};

TEST_F(MountedTool, TakesTheFirstEmptySlotAndTheRobotsSystem) {
    EXPECT_EQ(robot.GetToolEntity(), torch.get());
    EXPECT_EQ(robot.GetToolIndex(), 0);
    EXPECT_THAT(robot.GetCurrentTool(), IsTrsf(torch->GetToolTrsf(), 0, 0));
    EXPECT_EQ(torch->GetSystems(), std::set<std::uint64_t>{5});
    robot.UpdateAssembleData();
    EXPECT_EQ(robot.GetToolIndex(), 1) << "the slot is taken by then";
    for (const auto& [shift, index] : {std::pair{9e-8, 1}, {2e-7, 2}}) {
        std::vector<gp_Trsf> tools(2);
        tools[1].SetTranslation(gp_Vec(shift, 0, 0));
        robot.SetTools(tools);
        robot.ChangeCurrentTool(1);
        robot.UpdateAssembleData();
        EXPECT_EQ(robot.GetToolIndex(), index) << shift;
    }
}

TEST_F(MountedTool, MovesWithTheFlangeAndStaysOnItWhenReset) {
    robot.SetCurrentValue(values, 5);
    robot.ForwardTrsf(5, true, true);
    EXPECT_THAT(torch->GetFixMdls()[0]->Transformation(), IsTrsf(flange)) << "parts follow their root";
    EXPECT_THAT(robot.GetCurrentTrsfTCP(), IsTrsf(flange * torch->GetToolTrsf()));
    const auto [parts, second] = robot.GetZeroToolAndTrsf();
    EXPECT_EQ(parts.size(), 3U);
    EXPECT_THAT(second, IsTrsf(torch->GetToolTrsf().Inverted()));

    const auto& body = robot.GetAxis(6)->models[0];
    const gp_Trsf pose = body->Transformation();
    robot.ResetToolPosition();
    EXPECT_THAT(body->Transformation(), IsTrsf(pose));
    EXPECT_EQ(robot.GetCurrentValue(0), values);
    EXPECT_THAT(robot.GetCurrentTrsfTool0(), IsTrsf(flange));
    for (const auto& part : torch->GetFixMdls()) {
        EXPECT_THAT(part->Transformation(), IsTrsf(flange)) << "on the flange as before";
    }
}

TEST_F(MountedTool, ToolCentreIsTheSameWhenInitialFollowsMounting) {
    RobotEntity other(sample::Build(arm, 6).get());
    const auto late = ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
    other.AssembleOtherModel(late.get(), sample::Place(other.GetEndLink(0)->linkHash, 0));
    late->Initial();
    late->UpdateLinkModelNames();
    EXPECT_EQ(other.GetToolIndex(), robot.GetToolIndex());
    EXPECT_EQ(other.GetTools().size(), robot.GetTools().size());
    EXPECT_THAT(other.GetCurrentTrsfTCP(), IsTrsf(robot.GetCurrentTrsfTCP()));
}

TEST_F(MountedTool, SharesTheRobotsCollisionState) {
    CADParamConfig::GetInstance()->defaultCollisionGap = 6.5;
    for (const auto& [state, gap] : {std::pair{0, 6.5}, {1, 20.0}, {2, 2.0}, {7, 30.0}}) {
        robot.SetCurrentCollisionState(static_cast<CheckCollisionState>(state));
        EXPECT_EQ(robot.GetCheckCollisionGap(), gap) << state;
        EXPECT_EQ(torch->GetCheckCollisionGap(), gap) << state;
    }
}

} // namespace
