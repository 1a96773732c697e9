#include <support/Mechanism.h>

namespace {

constexpr std::uint64_t System = 77;

struct RailCase {
    const char* name;
    sample::Mechanism (*make)();
    std::size_t axes;
};

class Carrier : public testing::TestWithParam<RailCase> {
protected:
    Carrier() {
        motion.axes.resize(GetParam().axes);
        const auto structure = sample::Build(motion, 9);
        structure->SetRootMdlTrsf(base);
        structure->AssembleOtherModel(&robot, sample::Place(0, 0));
        pedestal = std::make_unique<PedestalEntity>(structure.get());
        robot.SetCurrentValue({0.3, -0.4, 0.2, 1.0, -0.8, 2.0}, System);
        robot.ForwardTrsf(System, true, true);
    }
    gp_Trsf AtZero(const std::vector<double>& values, const gp_Trsf& pose) {
        GrpState state(System);
        state.SetValues(Pedestal, values);
        return pedestal->TransLocEulerToZero(pose, state, base);
    }

    const Registrar registrar{System, {.pedestal = static_cast<int>(GetParam().axes)}};
    const gp_Trsf base = sample::Frame({300, -200, 150}, gp_Dir(0.1, 0.2, 1), gp_Dir(1, 0.3, -0.1));
    sample::Mechanism motion = GetParam().make();
    RobotEntity robot{sample::Build(sample::SixAxisArm(), System).get()};
    std::unique_ptr<PedestalEntity> pedestal;
    std::mt19937 random{8};
};

TEST_P(Carrier, PedestalMotionIsRemovedFromAPose) {
    const gp_Trsf atZero = robot.GetCurrentTrsfTCP();
    for (int draw = 0; draw < 100; ++draw) {
        const auto values = sample::RandomValues(motion, random);
        ASSERT_TRUE(pedestal->ForwardTrsfWithValue(values, true, true));
        ASSERT_THAT(robot.GetRootMdlTrsf(), IsTrsf(base * motion.FlangeAt(values)));
        ASSERT_THAT(AtZero(values, robot.GetCurrentTrsfTCP()), IsTrsf(atZero));
    }
}

TEST_P(Carrier, ZeroAxesAreSkippedAndUnknownJointTypesEndTheRemoval) {
    const gp_Trsf pose = robot.GetCurrentTrsfTCP();
    auto values = std::vector<double>(motion.axes.size(), 9.9e-7);
    EXPECT_THAT(AtZero(values, pose), IsTrsf(pose, 0, 0));
    values = sample::RandomValues(motion, random);
    pedestal->GetEndLink(0)->jointType = JointZ;
    const gp_Trsf before = base * motion.MotionAt(values, values.size() - 1) * base.Inverted();
    EXPECT_THAT(AtZero(values, pose), IsTrsf(before.Inverted() * pose));
    pedestal->GetLink(0)->jointType = JointZ;
    EXPECT_THAT(AtZero(values, pose), IsTrsf(pose, 0, 0));
}

TEST_P(Carrier, DismountedRobotLeavesTheSystems) {
    robot.SetAssembleTrsf(motion.flange);
    pedestal->ForwardTrsfWithValue(sample::RandomValues(motion, random), true, true);
    pedestal->DisassembleModel(&robot);
    pedestal->UpdateLinkModelNames(); // recomputes the systems
    pedestal->CreateCollisionMdl();
    EXPECT_EQ(pedestal->GetCheckCollisionGap(), 40.0);
    EXPECT_FALSE(pedestal->HasInSystem(System));
    EXPECT_THAT(robot.GetAssembleTrsf(), IsTrsf(gp_Trsf(), 0, 0));
    const gp_Trsf left = robot.GetCurrentTrsfTCP();
    pedestal->Reset();
    EXPECT_THAT(robot.GetCurrentTrsfTCP(), IsTrsf(left, 0, 0));
}

INSTANTIATE_TEST_SUITE_P(Rails, Carrier,
                         testing::Values(RailCase{"Linear", sample::TwoAxisRail, 1},
                                         RailCase{"Rotary", sample::Positioner, 1},
                                         RailCase{"TwoRotary", sample::Positioner, 2},
                                         RailCase{"Mixed", sample::TurningRail, 3}),
                         sample::NameOf);

} // namespace
