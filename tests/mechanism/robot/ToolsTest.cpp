#include <BRepBndLib.hxx>
#include <TopoDS_Iterator.hxx>
#include <support/Mechanism.h>

namespace {

constexpr double Degree = std::numbers::pi / 180.0;

class RobotTools : public testing::Test {
protected:
    static Json::Value Record(int type) {
        Json::Value json = Parsed(R"({"ToolIndex": 2, "X": 12.0, "Y": -5.0, "Z": 320.0})");
        json["Type"] = type;
        return json;
    }

    RobotEntity robot{sample::Build(sample::SixAxisArm(), 5).get()};
};

TEST_F(RobotTools, ListGrowsOnReadingUpToTenAndOnWritingWithoutLimit) {
    EXPECT_EQ(robot.GetTools().size(), 1U) << "the tool frame asked for tool 0";
    EXPECT_THAT(robot.GetToolFromVector(5), IsTrsf(gp_Trsf(), 0, 0));
    EXPECT_EQ(robot.GetTools().size(), 6U);
    LogCapture log;
    EXPECT_EQ(&robot.GetToolFromVector(11), &robot.GetTools()[0]);
    EXPECT_EQ(log.Records().at(0).level, spdlog::level::err);
    EXPECT_EQ(log.Records()[0].text, "传入错误的索引号，不可能出现当前大数11");
    Json::Value far = Record(0);
    far["ToolIndex"] = 11;
    robot.SetToolData(far);
    EXPECT_EQ(robot.GetTools().size(), 12U);
    far["ToolIndex"] = 0;
    robot.SetToolData(far);
    EXPECT_EQ(robot.GetTools()[0].TranslationPart().Z(), 320);
    robot.SetTools({});
    EXPECT_THROW(robot.GetToolFromVector(11), std::out_of_range);
}

TEST_F(RobotTools, AnglesAndQuaternionGiveTheSameFrame) {
    const gp_Pnt angles(20 * Degree, -35 * Degree, 110 * Degree);
    const gp_Trsf expected = gpHandle::EulerToTrsf(LocEuler({12, -5, 320}, angles));
    Json::Value euler = Record(0);
    euler["RX"] = 20;
    euler["RY"] = -35;
    euler["RZ"] = 110;
    robot.SetToolData(euler);
    const Json::Value record = robot.ChangeCurrentTool(2);
    EXPECT_THAT(robot.GetCurrentTool(), IsTrsf(expected));
    EXPECT_NEAR(record["RZ"].asDouble(), 110, 1e-9);

    Json::Value quaternion = Record(1);
    for (const char* key : {"Q1", "Q2", "Q3", "Q4"}) {
        quaternion[key] = record[key];
    }
    robot.SetTools({});
    robot.SetToolData(quaternion);
    EXPECT_THAT(robot.GetCurrentTool(), IsTrsf(expected));

    robot.SetToolData(Record(1));
    const gp_Trsf straight = gpHandle::EulerToTrsf(LocEuler({12, -5, 320}, {}));
    EXPECT_THAT(robot.GetCurrentTool(), IsTrsf(straight)) << "four zeros are no rotation";
    robot.SetToolData(Json::Value());
    EXPECT_EQ(robot.GetTools().size(), 3U);
}

TEST_F(RobotTools, ToolCentreComposesEndFlangeToolAndOffset) {
    Json::Value tool = Record(0);
    tool["RX"] = 30;
    tool["RY"] = 40;
    robot.SetToolData(tool);
    robot.ChangeCurrentTool(2);
    robot.SetZOffset(7.5);
    const std::vector<double> values = {0.3, -0.4, 0.2, 1.0, -0.8, 2.0};
    robot.ForwardTrsfWithValue(values, true, true);
    const gp_Trsf expected = sample::SixAxisArm().FlangeAt(values) *
                             gpHandle::EulerToTrsf(LocEuler({12, -5, 320}, {30 * Degree, 40 * Degree, 0})) *
                             gpHandle::EulerToTrsf(LocEuler({0, 0, 7.5}, {}));
    EXPECT_THAT(robot.GetCurrentTrsfTCP(), IsTrsf(expected));
    EXPECT_THAT(gpHandle::EulerToTrsf(robot.GetCurrentTCP()), IsTrsf(expected));
}

TEST_F(RobotTools, TriadStandsAtTheToolAndMovesWithTheEndLink) {
    robot.SetToolData(Record(0));
    robot.ChangeCurrentTool(2);
    robot.UpdateToolFrame();
    const auto first = robot.GetToolFrame();
    robot.UpdateToolFrame();
    const auto& endModel = robot.GetEndLink(0)->models.front();
    EXPECT_NE(robot.GetToolFrame(), first);
    EXPECT_EQ(endModel->Children().Size(), 1) << "the old triad is taken off";
    EXPECT_FALSE(first->IsDisplayed());
    EXPECT_TRUE(robot.GetToolFrame()->IsDisplayed());
    EXPECT_EQ(robot.GetToolFrame()->GetDisplayMode(), 0);
    EXPECT_TRUE(robot.GetToolFrame()->GetSelectionModes().empty());
    robot.ForwardTrsfWithValue({0.5, 0.1, -0.2, 0.3, 0.9, -1.0}, true, true);
    Bnd_Box box; // of the ball at the triad's origin, its first part
    BRepBndLib::AddOptimal(TopoDS_Iterator(robot.GetToolFrame()->Shape()).Value(), box);
    const gp_Pnt centre((box.CornerMin().XYZ() + box.CornerMax().XYZ()) / 2);
    EXPECT_LE(centre.Transformed(robot.GetToolFrame()->Transformation())
                  .Distance(gp_Pnt(robot.GetCurrentTrsfTCP().TranslationPart())),
              1e-6);
}

TEST_F(RobotTools, DeletingAWorkbenchAdjustsTheCurrentIndex) {
    const auto a = sample::Build(sample::Positioner(), 21);
    const auto b = sample::Build(sample::Positioner(), 22);
    const auto c = sample::Build(sample::Positioner(), 23);
    for (auto* bench : {a.get(), b.get(), c.get(), a.get()}) {
        robot.AddWorkbench(bench);
    }
    EXPECT_EQ(robot.GetWorkbenches().size(), 3U);
    EXPECT_EQ(robot.GetCurrentWorkbenchIndex(), 0);
    EXPECT_TRUE(a->GetSystems().contains(5));
    robot.SetCurrentWorkbench(c.get());
    robot.DeleteWorkbench(a.get());
    EXPECT_EQ(robot.GetCurrentWorkbench(), c.get());
    EXPECT_FALSE(a->GetSystems().contains(5));
    robot.DeleteWorkbench(a.get());
    EXPECT_EQ(robot.GetCurrentWorkbench(), b.get()) << "a bench that is not listed still moves the index";
    robot.DeleteWorkbench(b.get());
    EXPECT_EQ(robot.GetCurrentWorkbenchIndex(), 0);
}

TEST_F(RobotTools, DestroyedWorkbenchIsRemovedLikeADeletedOne) {
    auto first = sample::Build(sample::Positioner(), 21);
    const auto second = sample::Build(sample::Positioner(), 22);
    {
        RobotEntity shortLived(sample::Build(sample::SixAxisArm(), 8).get());
        shortLived.AddWorkbench(first.get());
    }
    robot.AddWorkbench(first.get());
    robot.AddWorkbench(second.get());
    robot.SetCurrentWorkbench(second.get());
    first.reset();
    EXPECT_EQ(robot.GetCurrentWorkbench(), second.get());
    EXPECT_EQ(robot.ToJson("")["Workbenches"].size(), 1U);
    robot.DeleteWorkbench(second.get());
    EXPECT_EQ(robot.GetCurrentWorkbench(), nullptr);
}

} // namespace
