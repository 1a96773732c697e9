#include <support/Mechanism.h>

namespace {

constexpr std::uint64_t Hash = 4711;
constexpr double Degree = std::numbers::pi / 180.0;

class AxisQueries : public testing::Test {
protected:
    ~AxisQueries() override { GrpConfig::ChangeCoupledList().erase(Hash); }

    const sample::Mechanism wrist = sample::CoupledArm();
    RobotEntity robot{sample::Build(sample::SixAxisArm(), Hash).get()};
    RobotEntity coupledRobot{sample::Build(wrist, Hash).get()};
};

TEST_F(AxisQueries, AxisNumbersStartAtOneAndThrowOutsideTheRange) {
    EXPECT_EQ(robot.GetAxis(6), robot.GetLink(5));
    for (const int axis : {0, -1, 7}) {
        ExpectFailure([&] { robot.GetAxis(axis); }, "RobotEntity", "RobotEntity::GetAxis",
                      "vector传入index错误，数据不在范围内");
    }
    EXPECT_EQ(robot.GetLinkRodsLocation(7).XYZ().Modulus(), 0.0);
    EXPECT_EQ(coupledRobot.GetRobotDOF(), 6);
}

TEST_F(AxisQueries, JointPositionsThrowForFewerThanSevenLinks) {
    EXPECT_THROW(robot.GetLinkJointPos(), std::out_of_range);
    const auto positions = coupledRobot.GetLinkJointPos();
    ASSERT_EQ(positions.size(), 6U);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        EXPECT_LE(positions[i].Distance(wrist.axes[i + 1].Location()), 1e-9) << i;
    }
}

TEST_F(AxisQueries, LimitsFollowTheCouplingRecord) {
    EXPECT_TRUE(robot.GetLimit(Hash, 0).empty()) << "an unfilled record has no first index";
    CoupedValue& coupled = GrpConfig::GetCoupledValue(Hash);
    coupled.index[0] = 0;
    const auto all = robot.GetLimit(Hash, 0.1);
    ASSERT_EQ(all.size(), 6U);
    EXPECT_NEAR(all[5].first, -170 * Degree + 0.1, 1e-12);
    EXPECT_NEAR(all[5].second, 175 * Degree - 0.1, 1e-12);

    coupled.index[1] = 4;
    EXPECT_EQ(robot.GetLimit(666, 0).size(), 6U) << "the record is not enabled";
    coupled.enabled = true;
    EXPECT_EQ(robot.GetLimit(666, 0).size(), 2U) << "links 0 and 4, then the terminator";
    EXPECT_EQ(robot.GetLimit(667, 0).size(), 6U);
    ExpectFailure([&] { robot.GetLimit(Hash, 173 * Degree); }, "RobotEntity", "RobotEntity::GetLimit",
                  "限位错误");
    robot.GetAxis(1)->limit = {-1, 1};
    EXPECT_EQ(robot.GetLimit(Hash, 1).front(), std::pair(0.0, 0.0)) << "a range of nothing is one";
    std::fill(std::begin(coupled.index), std::end(coupled.index), 0);
    EXPECT_EQ(robot.GetLimit(666, 0).size(), std::size(coupled.index)) << "ends without a terminator too";
}

TEST_F(AxisQueries, RobotIsUprightUnlessWithinTwentyDegreesOfStraightDown) {
    for (const double tilt : {0, 90, 159, 165, 180}) {
        gp_Trsf base;
        base.SetRotation(gp_Ax1(gp_Pnt(100, 0, 50), gp_Dir(1, 1, 0)), tilt * Degree);
        robot.SetRootMdlTrsf(base);
        EXPECT_EQ(robot.IsRobotUp(), tilt < 160) << tilt;
    }
}

TEST_F(AxisQueries, CoupledWristSetsValueSixToMinusValueFive) {
    const std::vector<double> values = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7};
    coupledRobot.SetCurrentValue(values, Hash);
    EXPECT_THAT(coupledRobot.GetCurrentValue(0), testing::ElementsAre(0.1, 0.2, 0.3, 0.4, 0.5, -0.5, 0.7));
    robot.SetCurrentValue(values, Hash);
    EXPECT_THAT(robot.GetCurrentValue(0), testing::ElementsAre(0.1, 0.2, 0.3, 0.4, 0.5, 0.6));
}

TEST_F(AxisQueries, InitialValuesAreTheConfiguredDefaultsThenZero) {
    auto& defaults = CADParamConfig::GetInstance()->defaultRobotValues;
    const auto before = std::exchange(defaults, {1, 2, 3, 4, 5, 6});
    const RobotEntity fresh(sample::Build(wrist, Hash).get());
    EXPECT_THAT(fresh.GetInitialValue(), testing::ElementsAre(1, 2, 3, 4, 5, 6, 0));
    defaults = before;
}

TEST_F(AxisQueries, IncompleteArmsAreRefused) {
    EXPECT_THROW(RobotEntity(nullptr), std::invalid_argument);
    GenericEntityConfig noFlange;
    EXPECT_THROW(RobotEntity{&noFlange}, std::out_of_range);
    EXPECT_TRUE(RobotEntity::GetArmDH1989(nullptr).empty());
}

} // namespace
