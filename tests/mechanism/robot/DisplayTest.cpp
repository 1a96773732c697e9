#include <support/Mechanism.h>

namespace {

struct RobotDisplay : testing::Test {
    RobotEntity robot{sample::Build(sample::SixAxisArm(), 5).get()};
};

TEST_F(RobotDisplay, CollisionModelSetsTheToleranceOfEveryAxis) {
    robot.CreateCollisionMdl();
    for (int axis = 1; axis <= 6; ++axis) {
        EXPECT_EQ(robot.GetAxis(axis)->models[0]->collisionTolerance, 5.0) << axis;
    }
    RobotEntity none;
    ExpectFailure([&] { none.CreateCollisionMdl(); }, "RobotEntity", "RobotEntity::GetAxis",
                  "vector传入index错误，数据不在范围内");
}

TEST_F(RobotDisplay, UnsafeZoneAboveAMicrometreIsShownAndNotSelectable) {
    robot.SetMaxWorkSpaceModel({0, 0, 0, 0.00099});
    EXPECT_TRUE(robot.GetUnsafeWorkspaceModel().IsNull());
    LogCapture log;
    LogUtils::Logger()->set_level(spdlog::level::debug);
    robot.SetMaxWorkSpaceModel({0, 100000, 0.0005, 0.001});
    EXPECT_EQ(log.Records().at(0).text, "0,1e+05,5e-04,0.001") << "as std::format prints numbers";
    const auto zone = robot.GetUnsafeWorkspaceModel();
    ASSERT_FALSE(zone.IsNull());
    zone->SetUnSelected(false);
    zone->SetSelectionMode(0, true);
    robot.SetUnSaftyWorkSpaceVisible(true);
    EXPECT_TRUE(zone->IsUnSelected() && zone->GetSelectionModes().empty());
}

TEST_F(RobotDisplay, DestroyingTheRobotRemovesItsWorkspaceFromTheView) {
    auto leaving = std::make_unique<RobotEntity>(sample::Build(sample::SixAxisArm(), 6).get());
    const auto region = leaving->GetWorkspace()->GetDisplayShape();
    region->Display(1, -1);
    leaving.reset();
    EXPECT_FALSE(region->IsDisplayed());
}

TEST_F(RobotDisplay, WorkspaceThatOutlivesItsRobotHasNone) {
    auto leaving = std::make_unique<RobotEntity>(sample::Build(sample::SixAxisArm(), 6).get());
    const auto first = leaving->GetWorkspace();
    leaving->Initial();
    const RobotWorkspace copy = *leaving->GetWorkspace();
    EXPECT_EQ(first->GetRobot(), leaving.get()) << "a workspace that was replaced still serves its holder";
    leaving.reset();
    EXPECT_EQ(copy.GetRobot(), nullptr);
    EXPECT_EQ(first->GetRobot(), nullptr);
    EXPECT_TRUE(first->GetBottomFace(false).first.IsNull());
}

TEST_F(RobotDisplay, DeletingTheRobotRemovesLinksAndTriadFromTheView) {
    const auto link = robot.GetAxis(3)->models[0];
    link->Display();
    robot.GetEndLink(0)->models[0]->Display();
    EXPECT_TRUE(robot.GetToolFrame()->IsDisplayed());
    robot.Delete();
    EXPECT_FALSE(link->IsDisplayed());
    EXPECT_FALSE(robot.GetToolFrame()->IsDisplayed());
    RobotEntity bare(sample::Build(sample::SixAxisArm(), 7).get());
    bare.GetEndLink(0)->models.clear();
    bare.UpdateToolFrame();
    bare.Delete();
    EXPECT_FALSE(bare.GetToolFrame()->IsDisplayed()) << "the triad of an end link without a body";
}

TEST_F(RobotDisplay, HidingForAnotherSystemLeavesTheRobotVisible) {
    const auto link = robot.GetAxis(2)->models[0];
    link->Display();
    robot.Hide(99);
    EXPECT_TRUE(link->IsDisplayed());
    robot.Hide(0);
    EXPECT_FALSE(link->IsDisplayed());
}

TEST_F(RobotDisplay, HidingTheRobotKeepsTheUnsafeZonesVisibility) {
    const auto link = robot.GetAxis(2)->models[0];
    for (const bool shown : {true, false}) {
        robot.SetMaxWorkSpaceModel({150, 0, 500, 1500});
        const auto zone = robot.GetUnsafeWorkspaceModel();
        if (shown) {
            zone->Display(1, -1);
        }
        zone->SetUnSelected(false);
        zone->SetSelectionMode(0, true);
        link->Display(1, -1);
        robot.Hide(5);
        EXPECT_FALSE(link->IsDisplayed());
        EXPECT_EQ(zone->IsDisplayed(), shown);
        EXPECT_TRUE(zone->IsUnSelected() && zone->GetSelectionModes().empty());
    }
}

} // namespace
