#include <gtest/gtest.h>
#include <support/SampleMechanisms.h>
#include <support/TrsfMatcher.h>

namespace {

class Kinematics : public testing::TestWithParam<sample::Case> {};

// One promise for every joint type: links stand where the motions about the axes at zero put them.
TEST_P(Kinematics, LinkFramesMatchProductsOfExponentials) {
    const sample::Mechanism mechanism = GetParam().make();
    const auto entity = sample::Build(mechanism, 9);
    const gp_Trsf base = sample::Frame({-50, 20, 10}, gp_Dir(1, 0, 1), gp_Dir(0, 1, 0));
    entity->SetRootMdlTrsf(base);
    std::mt19937 random(3);
    for (int draw = 0; draw < 100; ++draw) {
        const auto values = sample::RandomValues(mechanism, random);
        const gp_Trsf before = entity->GetCurrentTrsfTool0();
        entity->SetCurrentValue(values, 9);
        ASSERT_THAT(entity->GetCurrentTrsfTool0(), IsTrsf(before, 0, 0)) << "moved by stored values alone";
        ASSERT_TRUE(entity->ForwardTrsf(9, true, true));
        ASSERT_THAT(entity->GetCurrentTrsfTool0(), IsTrsf(base * mechanism.FlangeAt(values)));
        ASSERT_THAT(entity->GetInstalledTrsf(0), IsTrsf(mechanism.FlangeAt(values)));
        for (std::size_t i = 0; i < values.size(); ++i) {
            const LinkRod& link = *entity->GetLink(i);
            ASSERT_THAT(link.models[0]->Transformation(), IsTrsf(link.worldTrsf, 0, 0))
                << "model of link " << i;
        }
    }
    const auto current = entity->GetCurrentValue(9);
    const auto explicitValues = sample::RandomValues(mechanism, random);
    ASSERT_TRUE(entity->ForwardTrsfWithValue(explicitValues, false, true));
    EXPECT_THAT(entity->GetCurrentTrsfTool0(), IsTrsf(base * mechanism.FlangeAt(explicitValues)));
    EXPECT_EQ(entity->GetCurrentValue(9), current) << "explicit values are not kept";
    ASSERT_TRUE(entity->Reset());
    EXPECT_THAT(entity->GetCurrentTrsfTool0(), IsTrsf(base * mechanism.flange));
}

TEST_P(Kinematics, TooFewValuesMoveNothing) {
    const auto entity = sample::Build(GetParam().make(), 9);
    const gp_Trsf before = entity->GetCurrentTrsfTool0();
    EXPECT_FALSE(entity->ForwardTrsfWithValue({0.5}, true, true));
    EXPECT_THROW(entity->SetCurrentValue({0.5}, 9), std::invalid_argument);
    EXPECT_THAT(entity->GetCurrentTrsfTool0(), IsTrsf(before, 0, 0));
}

INSTANTIATE_TEST_SUITE_P(Mechanisms, Kinematics,
                         testing::Values(sample::Case{"SixAxis", sample::SixAxisArm},
                                         sample::Case{"Parallel", sample::ParallelArm},
                                         sample::Case{"CoupledWrist", sample::CoupledArm},
                                         sample::Case{"Rail", sample::TwoAxisRail},
                                         sample::Case{"Positioner", sample::Positioner}),
                         sample::NameOf);

TEST(Limits, MarginNarrowsLimitsAndIsRefusedBeyondThem) {
    const auto entity = sample::Build(sample::TwoAxisRail(), 9);
    EXPECT_TRUE(entity->IsInLimit({100, 8900}, 9, 100));
    EXPECT_FALSE(entity->IsInLimit({99, 8900}, 9, 100));
    EXPECT_FALSE(entity->IsInLimit({100, 8901}, 9, 100));
    EXPECT_EQ(entity->GetLimit(9, 10)[1], (std::pair{10.0, 8990.0}));
    EXPECT_THROW(entity->GetLimit(9, 4501), std::invalid_argument);
}

} // namespace
