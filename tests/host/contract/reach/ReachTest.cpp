#include "Arms.h"

#include <gtest/gtest.h>

namespace {

// What the profile promises, as shares of the reach.
constexpr double OutsideShare = 0.01;
constexpr double VertexShare = 0.01;
constexpr double FarthestShare = 0.005;
// Vertices are on the axis or well off it: revolved slivers cannot be triangulated in any reasonable time.
constexpr double OffAxisShare = 0.0015;

constexpr int Poses = 100000;

struct Point {
    double r, z;
};

Point SectionOf(const gp_XYZ& centre) { return {std::hypot(centre.X(), centre.Y()), centre.Z()}; }
double Distance(const Point& a, const Point& b) { return std::hypot(a.r - b.r, a.z - b.z); }

double DistanceToEdge(const Point& p, const Point& a, const Point& b) {
    const double dr = b.r - a.r;
    const double dz = b.z - a.z;
    const double t = std::clamp(((p.r - a.r) * dr + (p.z - a.z) * dz) / (dr * dr + dz * dz), 0.0, 1.0);
    return Distance(p, {a.r + t * dr, a.z + t * dz});
}

class Reach : public testing::TestWithParam<arms::Case> {
protected:
    Reach() {
        for (const auto& entry : WorkSpace::GetRobotWorkSpace(arm.record)) {
            profile.push_back({entry[0], entry[1]});
        }
    }

    // How far (mm) a point lies outside the profile; less than 0 inside.
    double Outside(const Point& p) const {
        bool inside = false;
        double nearest = INFINITY;
        for (std::size_t i = 0; i + 1 < profile.size(); ++i) {
            const Point& a = profile[i];
            const Point& b = profile[i + 1];
            if ((a.z > p.z) != (b.z > p.z) && p.r < a.r + (b.r - a.r) * (p.z - a.z) / (b.z - a.z)) {
                inside = !inside;
            }
            if (a.r != 0 || b.r != 0) { // along the axis there is no way out
                nearest = std::min(nearest, DistanceToEdge(p, a, b));
            }
        }
        return inside ? -nearest : nearest;
    }

    const arms::Arm arm{GetParam()};
    const std::array<double, 4> numbers = WorkSpace::GetRobotMaxWorkSpace(arm.record);
    const double reach = numbers[3];
    std::vector<Point> profile;
};

TEST_P(Reach, RandomPosesLieInsideTheProfile) {
    for (const double stopShare : {0.0, 0.6}) {
        for (const auto& [values, centre] : arm.RandomPoses(Poses, 7, stopShare)) {
            ASSERT_LE(Outside(SectionOf(centre)), OutsideShare * reach) << testing::PrintToString(values);
        }
    }
}

// What random poses seldom find: the boundary from inside, and narrow spaces beside joint 1's axis.
TEST_P(Reach, SearchForPosesOutsideTheProfileFindsNone) {
    std::vector<arms::Pose> starts = arm.RandomPoses(2000, 31);
    std::partial_sort(starts.begin(), starts.begin() + 80, starts.end(), [](const auto& a, const auto& b) {
        return SectionOf(a.second).r < SectionOf(b.second).r;
    });
    starts.resize(80);
    const auto atStops = arm.RandomPoses(80, 32, 0.6);
    starts.insert(starts.end(), atStops.begin(), atStops.end());
    const auto depth = [&](const gp_XYZ& centre) { return -Outside(SectionOf(centre)); };
    for (const auto& [values, centre] : starts) {
        ASSERT_LE(-arm.Descend(values, depth), OutsideShare * reach) << testing::PrintToString(values);
    }
}

TEST_P(Reach, EveryVertexOfTheProfileIsReached) {
    std::vector<arms::Pose> poses = arm.RandomPoses(5000, 31);
    for (const Point& vertex : profile) {
        const auto distance = [&](const gp_XYZ& centre) { return Distance(SectionOf(centre), vertex); };
        EXPECT_LE(arm.Search(poses, distance, VertexShare * reach), VertexShare * reach)
            << "vertex " << vertex.r << ", " << vertex.z;
    }
}

TEST_P(Reach, MatchesTheFarthestPointOfASearch) {
    const gp_XYZ shoulder(std::copysign(numbers[0], arm.mechanism.axes[1].Location().X()), numbers[1],
                          numbers[2]);
    const auto nearness = [&](const gp_XYZ& centre) { return -(centre - shoulder).Modulus(); };
    arms::Arm facingAhead = arm; // joint 1 would carry the shoulder along
    facingAhead.limits[0] = {0, 0};
    std::vector<arms::Pose> poses = facingAhead.RandomPoses(6, 5);
    const double farthest = -facingAhead.Search(poses, nearness, -INFINITY);
    EXPECT_NEAR(numbers[3] - numbers[0], farthest, FarthestShare * reach);
}

TEST_P(Reach, ProfileIsClosedSimpleAndOnOneSideOfTheAxis) {
    ASSERT_GE(profile.size(), 4U);
    EXPECT_EQ(Distance(profile.front(), profile.back()), 0);
    const auto side = [](const Point& a, const Point& b, const Point& p) {
        return (b.r - a.r) * (p.z - a.z) > (b.z - a.z) * (p.r - a.r);
    };
    const std::size_t n = profile.size() - 1;
    for (std::size_t i = 0; i < n; ++i) {
        EXPECT_TRUE(profile[i].r == 0 || profile[i].r > OffAxisShare * reach) << "a needle on the axis";
        for (std::size_t j = i + 2; j < n && (j + 1) % n != i; ++j) {
            const Point &a = profile[i], &b = profile[i + 1], &c = profile[j], &d = profile[j + 1];
            EXPECT_FALSE(side(a, b, c) != side(a, b, d) && side(c, d, a) != side(c, d, b))
                << i << " meets " << j;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(DescribedArms, Reach, testing::ValuesIn(arms::AllCases()), arms::NameOf);

TEST(SevenRows, FollowersLimitsBoundTheLeader) {
    WorkSpace::Robot wide = arms::Arm({"abb_irb5400_paint", true}).record;
    WorkSpace::Robot bounded = wide;
    wide.jointMin[4] = -0.2;
    wide.jointMax[4] = 0.5;
    bounded.jointMin[5] = -0.5;
    bounded.jointMax[5] = 0.2;
    EXPECT_EQ(WorkSpace::GetRobotWorkSpace(wide), WorkSpace::GetRobotWorkSpace(bounded));
}

} // namespace
