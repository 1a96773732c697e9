#include "Arms.h"

#include <numbers>

using namespace planning;

namespace {

constexpr double Met = 1e-6; // mm, at singularities

class AtSingularity : public testing::TestWithParam<const char*> {
protected:
    /// Joint origin in the world at values.
    gp_XYZ JointAt(const std::vector<double>& values, std::size_t joint) const {
        robot.ForwardTrsfWithValue(values, false, false);
        return robot.GetLink(joint)->worldTrsf.TranslationPart();
    }
    std::size_t WristJoint() const { return IsParallel() ? 3 : 4; }
    bool IsParallel() const { return std::string(GetParam()) == "ur_ur10e"; }

    /// Value 3 that stretches the arm, all positive turns of joint 3 being about +Y.
    double Stretched() const {
        const std::vector<double> zero(solver.Joints());
        const gp_XYZ upper = JointAt(zero, 2) - JointAt(zero, 1);
        const gp_XYZ fore = JointAt(zero, WristJoint()) - JointAt(zero, 2);
        return std::remainder(std::atan2(upper.X(), upper.Z()) - std::atan2(fore.X(), fore.Z()),
                              2 * std::numbers::pi);
    }

    void ExpectSolved(const std::vector<double>& values, const std::string& what) const {
        const Rigid pose = solver.FlangeAt(values);
        const Solutions solutions = solver.Flange(pose, values);
        ASSERT_FALSE(solutions.empty()) << what;
        for (const Solution& solution : solutions) {
            const arms::Miss miss = arms::Between(solver.FlangeAt(solution.values), pose);
            ASSERT_LE(miss.length, Met) << what;
            ASSERT_LE(miss.matrix, 1e-9) << what;
            ASSERT_FALSE(std::isnan(solution.smallestSingularValue)) << what;
        }
    }

    std::vector<double> Ordinary(std::mt19937& random) const {
        std::vector<double> values = arms::RandomValues(solver, random);
        values[1] = std::uniform_real_distribution<double>(-0.5, 0.5)(random);
        values[2] = std::uniform_real_distribution<double>(-0.5, 0.5)(random);
        return values;
    }
    void SetFifth(std::vector<double>& values, double fifth) const {
        values[4] = fifth;
        if (solver.Coupled()) {
            values[5] = -fifth;
        }
    }

    const cell::Cell cell = arms::Load(GetParam());
    RobotEntity& robot = *cell.Robots().front();
    const InverseKinematics solver{robot};
};

constexpr double Distances[] = {1e-3, 1e-4, 1e-5, 1e-6, 1e-7, 1e-8, 1e-9, 1e-10, 1e-11, 1e-12, 0};

TEST_P(AtSingularity, StraightWristSolutionsMeetThePose) {
    std::mt19937 random(8);
    for (int draw = 0; draw < 20; ++draw) {
        std::vector<double> values = Ordinary(random);
        for (const double distance : Distances) {
            for (const double fifth : {distance, -distance}) {
                SetFifth(values, fifth);
                ExpectSolved(values, "draw " + std::to_string(draw) + ", value 5 " + std::to_string(fifth));
            }
        }
    }
}

TEST_P(AtSingularity, StretchedArmSolutionsMeetThePose) {
    const double stretched = Stretched();
    if (solver.Coupled() || !(stretched > solver.Limit(2).first && stretched < solver.Limit(2).second)) {
        GTEST_SKIP() << "the limits keep joint 3 away from " << stretched;
    }
    std::mt19937 random(9);
    for (int draw = 0; draw < 20; ++draw) {
        std::vector<double> values = Ordinary(random);
        for (const double distance : Distances) {
            values[2] = stretched - distance;
            ExpectSolved(values, "draw " + std::to_string(draw) + ", off by " + std::to_string(distance));
        }
    }
}

TEST_P(AtSingularity, PoseBeyondTheStretchedArmReportsTheMissingLength) {
    const double stretched = Stretched();
    if (solver.Coupled() || !(stretched > solver.Limit(2).first && stretched < solver.Limit(2).second)) {
        GTEST_SKIP() << "the limits keep joint 3 away from " << stretched;
    }
    std::vector<double> values = {0.3, 0.4, stretched, 0.2, 0.7, -0.4};
    gp_XYZ outward = JointAt(values, WristJoint()) - JointAt(values, 1);
    if (IsParallel()) {
        // Joints 2 and 4 have an offset along their parallel axes.
        outward = JointAt(values, 2) - JointAt(values, 1);
    }
    outward.Normalize();
    const auto moved = [&](double by) {
        Rigid pose = solver.FlangeAt(values);
        for (int i = 0; i < 3; ++i) {
            pose.p[i] += by * outward.Coord(i + 1);
        }
        return solver.Flange(pose, values);
    };
    EXPECT_EQ(moved(-1e-9).outcome, Outcome::Solved);
    const Solutions beyond = moved(1);
    EXPECT_EQ(beyond.outcome, Outcome::OutOfReach);
    EXPECT_NEAR(beyond.excess, 1, 1e-6);
}

TEST_P(AtSingularity, ValuesAreContinuousThroughAStraightWrist) {
    constexpr int Steps = 400;
    constexpr double Width = 0.02;
    std::vector<double> values = {0.2, 0.3, -0.1, 0.4, 0, -0.3};
    values.resize(solver.Joints());
    std::vector<double> last;
    for (int step = 0; step <= Steps; ++step) {
        SetFifth(values, Width * (2.0 * step / Steps - 1));
        values[0] = 0.2 + 0.01 * step / Steps;
        const Solutions solutions = solver.Flange(solver.FlangeAt(values), last.empty() ? values : last);
        double least = std::numeric_limits<double>::infinity();
        const Solution* nearest = nullptr;
        for (const Solution& solution : solutions) {
            double apart = 0;
            for (std::size_t i = 0; i < solver.Joints(); ++i) {
                apart = std::max(apart, std::abs(solution.values[i] - (last.empty() ? values : last)[i]));
            }
            nearest = apart < least ? &solution : nearest;
            least = std::min(least, apart);
        }
        ASSERT_NE(nearest, nullptr) << "step " << step;
        ASSERT_LE(least, 3 * 2 * Width / Steps) << "step " << step;
        last.assign(nearest->values.begin(), nearest->values.begin() + static_cast<long>(solver.Joints()));
    }
}

INSTANTIATE_TEST_SUITE_P(Arms, AtSingularity, testing::ValuesIn(arms::All),
                         [](const auto& arm) { return std::string(arm.param); });

TEST(ShoulderSingularity, FreeValueComesFromTheReferenceAndIsMarked) {
    const cell::Cell cell = arms::Load("kuka_kr16_2");
    const InverseKinematics solver(*cell.Robots().front());
    RobotEntity& robot = *cell.Robots().front();
    // Value 3 that moves the wrist centre onto axis 1.
    std::vector<double> values = {0, -0.6, 0, 0.3, 0.8, 0.1};
    double behind = -0.97;
    double before = 0.6;
    for (int step = 0; step < 60; ++step) {
        values[2] = (behind + before) / 2;
        robot.ForwardTrsfWithValue(values, false, false);
        (robot.GetLink(4)->worldTrsf.TranslationPart().X() > 0 ? before : behind) = values[2];
    }
    const Rigid pose = solver.FlangeAt(values);
    const std::vector<double> near = {0.25, 0, 0, 0, 0, 0};
    bool taken = false;
    for (const Solution& solution : solver.Flange(pose, near)) {
        EXPECT_LE(arms::Between(solver.FlangeAt(solution.values), pose).length, Met);
        EXPECT_TRUE(solution.singular & ShoulderSingular);
        EXPECT_LT(solution.smallestSingularValue, 1e-6);
        taken = taken || solution.values[0] == near[0];
    }
    EXPECT_TRUE(taken);
}

} // namespace
