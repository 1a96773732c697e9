#include "Cell.h"

#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>
#include <support/LogCapture.h>

namespace {

// Accuracy (mm) of the optimal box of a surface of revolution of an exact ellipse of metres.
constexpr double Mm = 1e-3;

struct Numbers {
    std::array<double, 4> a;
    double polar; ///< half-axis along Z
};

class MaxReach : public testing::TestWithParam<Numbers> {};

TEST_P(MaxReach, ModelIsASpheroidBelowTheRootModel) {
    Cell cell;
    const auto& [a, polar] = GetParam();
    cell.robot.SetUnSaftyWorkSpaceVisible(true);
    EXPECT_TRUE(cell.robot.GetUnsafeWorkspaceModel().IsNull());
    cell.robot.SetMaxWorkSpaceModel({0, 0, 0, 500});
    const auto old = cell.robot.GetUnsafeWorkspaceModel();
    cell.robot.SetMaxWorkSpaceModel(a);
    const auto model = cell.robot.GetUnsafeWorkspaceModel();
    EXPECT_NE(model, old);
    EXPECT_EQ(old->Parent(), nullptr);
    EXPECT_EQ(model->Parent(), cell.robot.GetRootMdl().get());
    EXPECT_FALSE(model->IsDisplayed());
    EXPECT_TRUE(model->GetSelectionModes().empty());

    Bnd_Box box;
    BRepBndLib::AddOptimal(model->Shape(), box, false, false);
    const gp_Pnt low = box.CornerMin();
    const gp_Pnt high = box.CornerMax();
    EXPECT_NEAR(low.X(), -a[3], Mm);
    EXPECT_NEAR(high.Y(), a[1] + a[3], Mm);
    EXPECT_NEAR(low.Z(), a[2] - polar, Mm);
    EXPECT_NEAR(high.Z(), a[2] + polar, Mm);
}

INSTANTIATE_TEST_SUITE_P(Numbers, MaxReach,
                         testing::Values(Numbers{{0, 0, 400, 1500}, 1500}, Numbers{{300, 0, 400, 1500}, 1200},
                                         Numbers{{300, 50, 400, 1500}, 1200}));

TEST(MaxReachModel, UnusableNumbersKeepTheOldModel) {
    Cell cell;
    cell.robot.SetMaxWorkSpaceModel({0, 0, 400, 1500});
    const auto model = cell.robot.GetUnsafeWorkspaceModel();
    LogUtils::Logger()->set_level(spdlog::level::debug);
    LogCapture log;
    cell.robot.SetMaxWorkSpaceModel({0, 0, 0, 0.0005});
    cell.robot.SetMaxWorkSpaceModel({1600, 0, 0, 1500});
    ASSERT_EQ(log.Records().size(), 3U);
    const auto expect = [&](std::size_t i, auto level, int line, const char* text) {
        const LogRecord& record = log.Records()[i];
        EXPECT_EQ(record.level, level);
        EXPECT_EQ(record.line, line);
        EXPECT_EQ(record.file, "entity/mechanism/source/RobotEntity");
        EXPECT_EQ(record.function, "RobotEntity::SetMaxWorkSpaceModel");
        EXPECT_EQ(record.text, text);
    };
    expect(0, spdlog::level::debug, 693, "0,0,0,5e-04");
    expect(1, spdlog::level::debug, 693, "1600,0,0,1500");
    expect(2, spdlog::level::err, 728, "gp_Elips() - invalid construction parameters");
    EXPECT_EQ(cell.robot.GetUnsafeWorkspaceModel(), model);
    EXPECT_EQ(model->Parent(), cell.robot.GetRootMdl().get());
}

TEST(MaxReachModel, UsesTheRecordOfTheLastBuild) {
    Cell cell;
    cell.robot.UpdateMaxWork();
    EXPECT_TRUE(cell.robot.GetUnsafeWorkspaceModel().IsNull()) << "nothing was built yet";
    cell.workspace.UpdateWorkspaceShape(0);
    cell.robot.UpdateMaxWork();
    ASSERT_FALSE(cell.robot.GetUnsafeWorkspaceModel().IsNull());
    const auto a = RobotWorkspace::GetRobotMaxWorkSpace(&cell.robot);
    Bnd_Box box;
    BRepBndLib::AddOptimal(cell.robot.GetUnsafeWorkspaceModel()->Shape(), box, false, false);
    EXPECT_NEAR(box.CornerMax().X(), a[3], Mm);
}

} // namespace
