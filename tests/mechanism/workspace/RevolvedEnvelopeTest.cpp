#include "Cell.h"

#include <BRepAdaptor_Surface.hxx>
#include <limits>
#include <support/LogCapture.h>
#include <support/TrsfMatcher.h>

namespace {

// The solids of straight profiles are exact; the tolerance covers the rounding of the integration.
constexpr double VolumeShare = 1e-6;

// Area of a closed profile times its centroid's distance from the axis, m1 = integral of r over the area.
double FirstMoment(const std::vector<std::vector<double>>& profile) {
    double moment = 0;
    for (std::size_t i = 0; i + 1 < profile.size(); ++i) {
        const double cross = profile[i][0] * profile[i + 1][1] - profile[i + 1][0] * profile[i][1];
        moment += cross * (profile[i][0] + profile[i + 1][0]) / 6;
    }
    return moment;
}

/// Lower and upper limit of joint 1, degrees.
class RevolvedBy : public testing::TestWithParam<std::pair<double, double>> {};

TEST_P(RevolvedBy, HasTwoSolidsWithTheVolumeByPappus) {
    constexpr double Degree = std::numbers::pi / 180;
    Cell cell;
    cell.robot.GetLink(0)->limit = {GetParam().first * Degree, GetParam().second * Degree};
    cell.workspace.UpdateWorkspaceShape(0.1);
    const WorkSpace::Robot& record = cell.workspace.GetRobotData();
    EXPECT_EQ(record.ratio, 0.7) << "whatever the caller says";
    const auto solids = cell.Solids();
    ASSERT_EQ(solids.size(), 2U);
    const double moment = FirstMoment(WorkSpace::GetRobotWorkSpace(record));
    for (const auto& [solid, angle] :
         {std::pair{solids[0], record.jointMax[0]}, {solids[1], -record.jointMin[0]}}) {
        const double turned = std::min(angle, 360 * Degree);
        EXPECT_NEAR(ShapeHandle::GetAreaOrVol(solid) / (moment * turned), 1, VolumeShare);
    }
}

INSTANTIATE_TEST_SUITE_P(FirstJoint, RevolvedBy,
                         testing::Values(std::pair{-170, 175}, std::pair{-400, 400}, std::pair{-20, 370}));

TEST(RevolvedEnvelope, RecordIsFilledFromTheRobot) {
    Cell cell;
    const gp_Trsf tool = sample::Frame({10, -20, 300}, gp_Dir(1, 0, 1), gp_Dir(0, 1, 0));
    cell.robot.SetTools({tool});
    const gp_Trsf place = sample::Frame({500, -40, 100}, gp_Dir(0, 0, 1), gp_Dir(0, 1, 0));
    cell.robot.SetRootMdlTrsf(place);
    cell.workspace.UpdateWorkspaceShape(0);
    const WorkSpace::Robot& record = cell.workspace.GetRobotData();
    constexpr double Degree = std::numbers::pi / 180;
    constexpr double Rounding = 1e-12;
    EXPECT_EQ(record.dh, cell.robot.GetArmDH());
    EXPECT_NEAR(record.jointMin[5], -167 * Degree, Rounding);
    EXPECT_NEAR(record.jointMax[5], 172 * Degree, Rounding);
    EXPECT_EQ(record.jointMax[6], 0);
    EXPECT_EQ(record.toolOffset[2], 0.3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            EXPECT_EQ(record.toolRotation[3 * row + column], tool.VectorialPart().Value(row + 1, column + 1));
        }
        for (int column = 0; column < 4; ++column) {
            EXPECT_NEAR(record.base[4 * row + column], place.Value(row + 1, column + 1), Rounding);
        }
    }
    EXPECT_TRUE(record.upright);
    EXPECT_EQ(record.systemType, 0);
}

TEST(RevolvedEnvelope, RecordHoldsTheCarriersLimits) {
    struct Limited : GenericEntityConfig {
        std::vector<std::pair<double, double>> GetLimit(size_t, double) override { return {{1, 2}, {3, 4}}; }
    } carrier;
    Cell cell;
    carrier.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    carrier.AddFlange(std::make_shared<Flange>());
    carrier.AssembleOtherModel(&cell.robot, sample::Place(0, 0));
    cell.workspace.UpdateWorkspaceShape(0);
    const WorkSpace::Robot& record = cell.workspace.GetRobotData();
    EXPECT_EQ(record.externalLimits[0][1], 2);
    EXPECT_EQ(record.externalLimits[1][0], 3);
    carrier.DisassembleModel(&cell.robot);
}

TEST(RevolvedEnvelope, IsRebuiltOnlyWhenTheToolChanges) {
    Cell cell;
    cell.robot.ShowBestWorkspace(true);
    EXPECT_TRUE(cell.workspace.GetDisplayShape()->IsDisplayed());
    EXPECT_EQ(cell.workspace.GetDisplayShape()->GetDisplayMode(), 1) << "shaded";
    const TopoDS_Shape first = cell.Shown();
    cell.robot.SetRootMdlTrsf(sample::Frame({500, 0, 100}, gp_Dir(0, 0, 1), gp_Dir(0, 1, 0)));
    cell.robot.ShowBestWorkspace(true);
    EXPECT_TRUE(cell.Shown().IsEqual(first)) << "the envelope follows the base without being built";
    EXPECT_THAT(cell.workspace.GetDisplayShape()->LocalTransformation(),
                IsTrsf(cell.robot.GetRootMdlTrsf(), 0, 0));
    gp_Trsf tool;
    tool.SetTranslation(gp_Vec(0, 0, 200));
    cell.robot.SetTools({tool});
    cell.robot.ShowBestWorkspace(true);
    EXPECT_FALSE(cell.Shown().IsPartner(first));
    cell.robot.ShowBestWorkspace(false);
    EXPECT_FALSE(cell.workspace.GetDisplayShape()->IsDisplayed());
}

struct Fault {
    const char* name;
    void (*spoil)(Cell&);
    const char* text;
};

class FaultyRobot : public testing::TestWithParam<Fault> {};

TEST_P(FaultyRobot, FailedBuildIsLoggedAndKeepsTheShownShape) {
    Cell cell;
    cell.workspace.UpdateWorkspaceShape(0);
    const TopoDS_Shape shown = cell.Shown();
    const double reach = cell.workspace.GetRobotData().toolOffset[2];
    GetParam().spoil(cell);
    LogCapture log;
    cell.workspace.UpdateWorkspaceShape(0);
    ASSERT_FALSE(log.Records().empty());
    const LogRecord& record = log.Records().back();
    EXPECT_EQ(record.level, spdlog::level::err);
    EXPECT_EQ(record.line, 249);
    EXPECT_EQ(record.file, "entity/mechanism/source/RobotWorkspace");
    EXPECT_EQ(record.function, "RobotWorkspace::UpdateWorkspaceShape");
    EXPECT_EQ(record.text, GetParam().text);
    EXPECT_TRUE(cell.Shown().IsEqual(shown));
    EXPECT_EQ(cell.workspace.GetRobotData().toolOffset[2], reach);
}

INSTANTIATE_TEST_SUITE_P(
    Faults, FaultyRobot,
    testing::Values(Fault{"no_limits", [](Cell&) { GrpConfig::ChangeCoupledList().erase(Cell::Hash); },
                          "invalid vector subscript"},
                    Fault{"no_tool",
                          [](Cell& cell) {
                              gp_Trsf tool;
                              tool.SetTranslation(gp_Vec(0, 0, std::numeric_limits<double>::quiet_NaN()));
                              cell.robot.SetTools({tool});
                          },
                          "WorkSpace: tool offset is not finite"},
                    Fault{"no_system",
                          [](Cell& cell) {
                              cell.robot.SetHashIndex(92);
                              GrpConfig::GetCoupledValue(92).index[0] = 0;
                          },
                          "机器人最佳工作区间生成异常"}),
    [](const auto& which) { return which.param.name; });

TEST(RevolvedEnvelope, WorkspaceWithoutARobotBuildsNothing) {
    RobotWorkspace workspace;
    workspace.ShowWorkspaceShape(true, 0.65);
    EXPECT_TRUE(workspace.GetDisplayShape()->Shape().IsNull());
    EXPECT_TRUE(workspace.GetBottomFace(false).first.IsNull());
    EXPECT_EQ(RobotWorkspace::GetRobotMaxWorkSpace(nullptr), (std::array<double, 4>{}));
}

} // namespace
