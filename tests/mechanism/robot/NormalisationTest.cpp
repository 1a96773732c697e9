#include <support/Mechanism.h>

// The law of normalisation: rewriting an arm to its table moves no axis, body or flange at any joint values,
// and the table of a rewritten arm is the same table.

namespace {

constexpr double SameNumber = 1e-9; // mm, rad
constexpr int Draws = 200;

class Normalisation : public testing::TestWithParam<sample::Case> {
protected:
    Normalisation() : arm(GetParam().make()), structure(sample::Build(arm, 77)) {
        structure->SetRootMdlTrsf(base);
        robot = std::make_unique<RobotEntity>(structure.get());
    }

    void ExpectEverythingInPlace(const std::string& when) {
        SCOPED_TRACE(when);
        std::mt19937 random(20);
        for (int draw = 0; draw < Draws; ++draw) {
            const auto values = sample::RandomValues(arm, random);
            robot->SetCurrentValue(values, 77);
            ASSERT_TRUE(robot->ForwardTrsf(77, true, true));
            ASSERT_THAT(robot->GetCurrentTrsfTCP(), IsTrsf(base * arm.FlangeAt(values)));
            ASSERT_THAT(robot->GetCurrentTrsfTool0(), IsTrsf(base * arm.FlangeAt(values)));
            for (std::size_t i = 0; i < arm.axes.size(); ++i) {
                ExpectLinkInPlace(i, base * arm.MotionAt(values, i + 1));
            }
        }
    }

    void ExpectLinkInPlace(std::size_t i, const gp_Trsf& motion) {
        const LinkRod& link = *robot->GetLink(i);
        const gp_Ax1 axis = link.axis.Transformed(link.worldTrsf);
        const gp_Ax1 expected = arm.axes[i].Transformed(motion);
        EXPECT_TRUE(axis.Direction().IsEqual(expected.Direction(), SameNumber)) << "axis " << i + 1;
        EXPECT_LE(axis.Location().Distance(expected.Location()), SameNumber) << "joint origin " << i + 1;
        const ViewShape& model = *link.models.front();
        const gp_Trsf body = model.LocalTransformation() * model.Shape().Location().Transformation();
        EXPECT_THAT(body, IsTrsf(motion * bodyAtZero[i])) << "body " << i + 1;
    }

    const gp_Trsf base = sample::Frame({300, -200, 150}, gp_Dir(0.1, 0.2, 1), gp_Dir(1, 0.3, -0.1));
    const sample::Mechanism arm;
    const std::unique_ptr<GenericEntityConfig> structure;
    // Places of the bodies in the description, before any link was rewritten.
    const std::vector<gp_Trsf> bodyAtZero = [this] {
        std::vector<gp_Trsf> bodies;
        for (int i = 0; i < structure->GetLinkSize(); ++i) {
            bodies.push_back(structure->GetLink(static_cast<std::size_t>(i))->worldTrsf);
        }
        return bodies;
    }();
    std::unique_ptr<RobotEntity> robot;
};

TEST_P(Normalisation, RepeatedRewritingMovesNoAxisModelOrFlange) {
    ExpectEverythingInPlace("as built");
    robot->SetName("renamed");
    robot->UpdateLinkModelNames();
    ExpectEverythingInPlace("renamed");
    robot->LoadFromJson(robot->ToJson(""));
    ExpectEverythingInPlace("saved and loaded");
}

TEST_P(Normalisation, LinksTurnAboutTheirZAndExtractionIsIdempotent) {
    const auto table = robot->GetArmDH();
    ASSERT_EQ(table.size(), arm.axes.size());
    for (int i = 0; i < robot->GetLinkSize(); ++i) {
        EXPECT_EQ(robot->GetLink(static_cast<std::size_t>(i))->jointType, JointZ);
    }
    const auto again = RobotEntity::GetArmDH1989(robot.get());
    ASSERT_EQ(again.size(), table.size());
    for (std::size_t row = 0; row < table.size(); ++row) {
        EXPECT_THAT(again[row], testing::Pointwise(testing::DoubleNear(SameNumber), table[row])) << row;
    }
}

TEST_P(Normalisation, RepeatedLoadingReachesAFixedDocument) {
    robot->LoadFromJson(robot->ToJson(""));
    const Json::Value first = robot->ToJson("");
    robot->LoadFromJson(first);
    EXPECT_EQ(robot->ToJson(""), first);
}

TEST(ParallelArm, TableStartsFromABaseTurnedByPiAboutZ) {
    const RobotEntity robot(sample::Build(sample::ParallelArm(), 4).get());
    gp_Trsf half;
    half.SetRotation(gp::OZ(), std::numbers::pi);
    EXPECT_THAT(robot.GetRobotBaseDHTrsf(), IsTrsf(half));
}

INSTANTIATE_TEST_SUITE_P(Arms, Normalisation,
                         testing::Values(sample::Case{"SixAxis", sample::SixAxisArm},
                                         sample::Case{"Parallel", sample::ParallelArm},
                                         sample::Case{"CoupledWrist", sample::CoupledArm}),
                         sample::NameOf);

} // namespace
