#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <host/tools/CADParamConfig.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/RobotEntity.h>
#include <support/LogCapture.h>
#include <support/SampleMechanisms.h>

namespace {

constexpr std::uint64_t Hash = 4711;
constexpr double Degree = std::numbers::pi / 180.0;

class AxisQueries : public testing::Test {
protected:
    ~AxisQueries() override { GrpConfig::ChangeCoupledList().erase(Hash); }

    static std::unique_ptr<RobotEntity> Make(const sample::Mechanism& arm) {
        return std::make_unique<RobotEntity>(sample::Build(arm, Hash).get());
    }

    /// Runs an operation that must fail, and checks the thrown text, the record and where it says it is.
    template <class Operation>
    static void ExpectFailure(Operation operation, const std::string& function, const std::string& message) {
        LogCapture log;
        try {
            operation();
            ADD_FAILURE() << "nothing thrown";
        } catch (const std::string& text) {
            EXPECT_THAT(text, testing::EndsWith(function + message));
        }
        ASSERT_EQ(log.Records().size(), 1U);
        EXPECT_EQ(log.Records()[0].level, spdlog::level::critical);
        EXPECT_EQ(log.Records()[0].text, message);
        EXPECT_EQ(log.Records()[0].function, function);
        EXPECT_EQ(log.Records()[0].file, "entity/mechanism/source/RobotEntity");
    }

    std::unique_ptr<RobotEntity> robot = Make(sample::SixAxisArm());
};

TEST_F(AxisQueries, AxesAreCountedFromOneAndRefusedOutside) {
    EXPECT_EQ(robot->GetAxis(1), robot->GetLink(0));
    EXPECT_EQ(robot->GetAxis(6), robot->GetLink(5));
    for (const int axis : {0, -1, 7}) {
        ExpectFailure([&] { robot->GetAxis(axis); }, "RobotEntity::GetAxis",
                      "vector传入index错误，数据不在范围内");
    }
    EXPECT_EQ(robot->GetLinkRodsLocation(7).XYZ().Modulus(), 0.0);
    EXPECT_EQ(robot->GetRobotDOF(), 6);
    EXPECT_EQ(Make(sample::CoupledArm())->GetRobotDOF(), 6);
}

TEST_F(AxisQueries, JointPositionsNeedSevenLinks) {
    EXPECT_THROW(robot->GetLinkJointPos(), std::out_of_range);
    const auto arm = sample::CoupledArm();
    const auto seven = Make(arm);
    const auto positions = seven->GetLinkJointPos();
    ASSERT_EQ(positions.size(), 6U);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        EXPECT_LE(positions[i].Distance(arm.axes[i + 1].Location()), 1e-9) << i;
    }
}

TEST_F(AxisQueries, LimitsFollowTheCouplingRecordOnlyAsItSays) {
    EXPECT_TRUE(robot->GetLimit(Hash, 0).empty()) << "an unfilled record has no first index";
    CoupedValue& coupled = GrpConfig::GetCoupledValue(Hash);
    coupled.index[0] = 0;
    const auto all = robot->GetLimit(Hash, 0.1);
    ASSERT_EQ(all.size(), 6U);
    EXPECT_NEAR(all[5].first, -170 * Degree + 0.1, 1e-12);
    EXPECT_NEAR(all[5].second, 175 * Degree - 0.1, 1e-12);

    coupled.index[1] = 4;
    EXPECT_EQ(robot->GetLimit(666, 0).size(), 6U) << "the record is not enabled";
    coupled.enabled = true;
    EXPECT_EQ(robot->GetLimit(666, 0).size(), 2U) << "links 0 and 4, then the terminator";
    EXPECT_EQ(robot->GetLimit(667, 0).size(), 6U);
    ExpectFailure([&] { robot->GetLimit(Hash, 173 * Degree); }, "RobotEntity::GetLimit", "限位错误");

    for (int& index : coupled.index) {
        index = 0; // no terminator: the walk must still end with the list
    }
    EXPECT_EQ(robot->GetLimit(666, 0).size(), std::size(coupled.index));
}

TEST_F(AxisQueries, ARobotIsUpUnlessItHangsWithinTwentyDegreesOfStraightDown) {
    for (const auto& [tilt, up] :
         {std::pair{0.0, true}, {90.0, true}, {159.0, true}, {165.0, false}, {180.0, false}}) {
        gp_Trsf base;
        base.SetRotation(gp_Ax1(gp_Pnt(100, 0, 50), gp_Dir(1, 1, 0)), tilt * Degree);
        robot->SetRootMdlTrsf(base);
        EXPECT_EQ(robot->IsRobotUp(), up) << tilt;
    }
}

TEST_F(AxisQueries, ACoupledWristTurnsBackAndOrdinaryOnesDoNot) {
    const std::vector<double> values = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7};
    const auto coupled = Make(sample::CoupledArm());
    coupled->SetCurrentValue(values, Hash);
    EXPECT_THAT(coupled->GetCurrentValue(0), testing::ElementsAre(0.1, 0.2, 0.3, 0.4, 0.5, -0.5, 0.7));
    robot->SetCurrentValue(values, Hash);
    EXPECT_THAT(robot->GetCurrentValue(0), testing::ElementsAre(0.1, 0.2, 0.3, 0.4, 0.5, 0.6));
    EXPECT_THROW(robot->SetCurrentValue({0.1, 0.2}, Hash), std::invalid_argument);
    EXPECT_EQ(robot->GetCurrentValue(0)[1], 0.2) << "a refused vector changes nothing";
}

TEST_F(AxisQueries, InitialValuesAreTheConfiguredOnesAndZeroBeyond) {
    auto& defaults = CADParamConfig::GetInstance()->defaultRobotValues;
    const auto before = defaults;
    defaults = {1, 2, 3, 4, 5, 6};
    EXPECT_THAT(Make(sample::CoupledArm())->GetInitialValue(), testing::ElementsAre(1, 2, 3, 4, 5, 6, 0));
    defaults = before;
}

TEST_F(AxisQueries, WhatCannotBeAnArmIsRefused) {
    EXPECT_THROW(RobotEntity(nullptr), std::invalid_argument);
    GenericEntityConfig noFlange;
    EXPECT_THROW(RobotEntity{&noFlange}, std::out_of_range);
    EXPECT_TRUE(RobotEntity::GetArmDH1989(nullptr).empty());
}

} // namespace
