#include "Arms.h"

#include <gtest/gtest.h>

namespace {

/// The box is laid out in cells of 1 % of the arm's length; a corner may miss by the diagonal of one.
constexpr double MissShare = 0.015;

class WorkBox : public testing::TestWithParam<arms::Case> {
protected:
    // The corners and the middle of the box, searched for in joint values.
    void ExpectReachedThroughout(const std::array<double, 6>& box) const {
        std::vector<arms::Pose> poses = arm.RandomPoses(1500, 3);
        for (const int i : {0, 2, 6, 8, 13, 18, 20, 24, 26}) {
            const auto mix = [&](std::size_t axis, int third) {
                return box[axis] + (box[axis + 3] - box[axis]) * third / 2;
            };
            const double r = std::hypot(mix(0, i % 3), mix(1, i / 3 % 3));
            const double z = mix(2, i / 9);
            const auto distance = [&](const gp_XYZ& centre) {
                return std::hypot(std::hypot(centre.X(), centre.Y()) - r, centre.Z() - z);
            };
            EXPECT_LE(arm.Search(poses, distance, MissShare * length), MissShare * length) << r << ", " << z;
            EXPECT_LE(std::hypot(r - numbers[0], z - numbers[2]), record.ratio * length);
        }
    }

    const arms::Arm arm{GetParam()};
    WorkSpace::Robot record = arm.record;
    const std::array<double, 4> numbers = WorkSpace::GetRobotMaxWorkSpace(record);
    const double length = numbers[3] - numbers[0];
};

TEST_P(WorkBox, OfAnUprightRobotIsBesideIt) {
    const auto box = WorkSpace::GetInvertedRobotWorkSpace(record);
    EXPECT_EQ(box[0], -box[3]);
    EXPECT_GE(box[1], 0);
    EXPECT_GT((box[3] - box[0]) * (box[4] - box[1]) * (box[5] - box[2]), std::pow(length / 5, 3));
    ExpectReachedThroughout(box);
}

TEST_P(WorkBox, OfAHangingRobotSurroundsItsAxisWhereReached) {
    const auto upright = WorkSpace::GetInvertedRobotWorkSpace(record);
    record.upright = false;
    const auto box = WorkSpace::GetInvertedRobotWorkSpace(record);
    ExpectReachedThroughout(box);
    EXPECT_TRUE(box[1] == -box[4] || box == upright);
}

INSTANTIATE_TEST_SUITE_P(DescribedArms, WorkBox, testing::ValuesIn(arms::AllCases()), arms::NameOf);

} // namespace
