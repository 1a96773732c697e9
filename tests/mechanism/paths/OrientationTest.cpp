#include <gp_QuaternionNLerp.hxx>
#include <gp_TrsfNLerp.hxx>
#include <numbers>
#include <support/Draws.h>
#include <support/Mechanism.h>

// Compared with the kernel's own blends.

namespace {

constexpr double Pi = std::numbers::pi;
// Products of unit rotations, and one conversion to angles and back.
constexpr double Entries = 1e-12;
constexpr double Mm = 1e-9;

gp_Pnt Drawn(Draw& draw, double limit) {
    return {draw.Between(-limit, limit), draw.Between(-limit, limit), draw.Between(-limit, limit)};
}
LocEuler Pose(Draw& draw) { return {Drawn(draw, 2e3), Drawn(draw, Pi)}; }

gp_Quaternion Quaternion(const gp_Pnt& angles) {
    gp_Quaternion q;
    q.SetEulerAngles(gp_Intrinsic_XYZ, angles.X(), angles.Y(), angles.Z());
    return q;
}

gp_Quaternion Blend(const gp_Pnt& a, const gp_Pnt& b, double t) {
    gp_Quaternion q;
    gp_QuaternionNLerp(Quaternion(a), Quaternion(b)).Interpolate(t, q);
    return q;
}

gp_Trsf Blended(const gp_Pnt& a, const gp_Pnt& b, double t) {
    gp_Trsf trsf;
    trsf.SetRotation(Blend(a, b, t).Normalized());
    return trsf;
}

gp_Trsf FromAngles(const gp_Pnt& angles) { return gpHandle::EulerToRotateTrsf(angles); }

TEST(Orientation, SamplesMatchTheKernelsQuaternionBlend) {
    Draw draw(51);
    for (int i = 0; i < Draws::Count(); ++i) {
        const gp_Pnt a = Drawn(draw, Pi);
        const gp_Pnt b = Drawn(draw, Pi);
        const int n = draw.Whole(2, 9);
        const auto samples = InterpHandle::EulerByQuaternion(a, b, n);
        ASSERT_EQ(samples.size(), static_cast<std::size_t>(n));
        for (int k = 0; k < n; ++k) {
            const double t = static_cast<double>(k) / (n - 1);
            ASSERT_THAT(FromAngles(samples[static_cast<std::size_t>(k)]),
                        IsTrsf(Blended(a, b, t), 0, Entries))
                << "draw " << i << ", sample " << k;
        }
        const double outside = draw.Between(-1, 2);
        ASSERT_TRUE(InterpHandle::EulerScaleByQuaternion(a, b, outside).IsEqual(Blend(a, b, outside)))
            << "not normalised, not clamped";
    }
}

TEST(Orientation, CountsBelowTwoAndTheShorterArc) {
    const gp_Pnt a(3, 0, 0);
    EXPECT_TRUE(InterpHandle::EulerByQuaternion(a, {}, 0).empty());
    EXPECT_EQ(InterpHandle::EulerByQuaternion(gp_Pnt(9, 9, 9), {}, 1).front().X(), 9)
        << "as given, not re-derived";
    const double wide = 170 * Pi / 180;
    const auto through = InterpHandle::EulerByQuaternion(gp_Pnt(wide, 0, 0), gp_Pnt(-wide, 0, 0), 3);
    EXPECT_NEAR(std::abs(through[1].X()), Pi, 1e-9) << "by way of 180 degrees, not 0";
    const auto quarters = InterpHandle::EulerByQuaternion({}, gp_Pnt(0, 0, Pi / 2), 5);
    EXPECT_NEAR(quarters[2].Z(), Pi / 4, 1e-12);
    EXPECT_GT(std::abs(quarters[1].Z() - Pi / 8), 1e-3) << "no slerp: quarter points are off";
}

TEST(Orientation, PathFractionIsTheChordFromTheStart) {
    const gp_Pnt a(0.1, 0.2, 0.3);
    const gp_Pnt b(0.9, -0.4, 1.2);
    const std::vector<gp_Pnt> path = {{0, 0, 0}, {15, 0, 0}, {0, 4, 0}, {10, 0, 0}};
    const auto samples = InterpHandle::EulerByQuaternion(a, b, path);
    ASSERT_EQ(samples.size(), path.size());
    const std::vector<double> expected = {0, 1.5, 0.4, 1};
    for (std::size_t i = 0; i < path.size(); ++i) {
        EXPECT_THAT(FromAngles(samples[i]), IsTrsf(Blended(a, b, expected[i]), 0, Entries)) << i;
    }
    EXPECT_THAT(FromAngles(InterpHandle::EulerByQuaternion(a, b, {{0, 0, 0}, {1, 0, 0}})[1]),
                IsTrsf(FromAngles(b), 0, Entries));
    EXPECT_TRUE(InterpHandle::EulerByQuaternion(a, b, std::vector<gp_Pnt>()).empty());
    EXPECT_EQ(InterpHandle::EulerByQuaternion(a, b, std::vector<gp_Pnt>(1)).size(), 1U);
    for (const double end : {0.99e-6, 1.01e-6}) {
        const auto closed = InterpHandle::EulerByQuaternion(a, b, {{0, 0, 0}, {7, 0, 0}, {end, 0, 0}});
        ASSERT_EQ(closed.size(), 3U);
        EXPECT_EQ(closed[1].IsEqual(a, 0), end < 1e-6);
    }
}

TEST(Orientation, CountDependsOnTheDirectionOfTheChangeAlone) {
    const auto count = [](const gp_Pnt& b, double step) {
        return InterpHandle::InterpolationPtsByQuaternion(gp_Pnt(), b, step).size();
    };
    EXPECT_EQ(count({2, 0, 0}, 0.1), 10U);
    EXPECT_EQ(count({1, 1, 1}, 0.1), 6U) << "1/sqrt(3)/0.1 = 5.77";
    EXPECT_EQ(count({0.5, 0, 0}, 1 / 2.5), 3U) << "halves go away from zero";
    EXPECT_EQ(count({0.00099, 0, 0}, 0.1), 1U);
    EXPECT_EQ(count({0.00101, 0, 0}, 0.1), 10U);
    EXPECT_EQ(count({0.5, 0, 0}, 0.000099), 1U);
    EXPECT_EQ(count({0.5, 0, 0}, 0.0001), 10000U);
    EXPECT_EQ(count({0.5, 0, 0}, std::nan("")), 1U);
}

TEST(Orientation, StatesChangeOnlyTheFirstPose) {
    const Registrar registrar(61, {.robots = 2});
    GrpState a(61), b(61);
    a.SetValues(std::vector<double>(12, 0.5));
    a.SetToolIndex(4);
    a.SetLocEuler(0, LocEuler({0, 0, 0}, {0.1, 0.2, 0.3}));
    a.SetLocEuler(1, LocEuler({5, 5, 5}, {}));
    b.SetLocEuler(0, LocEuler({30, 0, 40}, {1.0, -0.2, 0.7}));
    const auto states = InterpHandle::InterpolationPtsByQuaternion(a, b, 3.9);
    ASSERT_EQ(states.size(), 3U);
    EXPECT_TRUE(states[1].IsEqual(a, 0));
    EXPECT_EQ(states[1].GetToolIndex(), 4);
    EXPECT_EQ(states[1].GetLocEuler(1).location.X(), 5);
    EXPECT_LE(states[1].GetLocEuler(0).location.Distance(gp_Pnt(15, 0, 20)), Mm);
    EXPECT_THAT(FromAngles(states[1].GetLocEuler(0).euler),
                IsTrsf(Blended(a.GetLocEuler(0).euler, b.GetLocEuler(0).euler, 0.5), 0, Entries));
    const auto one = InterpHandle::InterpolationPtsByQuaternion(a, b, 1.9);
    ASSERT_EQ(one.size(), 1U);
    EXPECT_EQ(one[0].GetLocEuler(0).location.Z(), 40) << "b's position";
    EXPECT_EQ(one[0].GetLocEuler(0).euler.X(), 0.1) << "a's angles";
    EXPECT_TRUE(InterpHandle::InterpolationPtsByQuaternion(a, b, 0.9).empty());
}

TEST(Orientation, PosesLieOnTheSegmentWithBlendedAngles) {
    Draw draw(52);
    for (int i = 0; i < Draws::Count() / 10; ++i) {
        const LocEuler a = Pose(draw);
        const LocEuler b = Pose(draw);
        const auto transforms = InterpHandle::InterpolationPtsByQuaternion(a, b, draw.Between(50, 700));
        const auto parts = static_cast<double>(transforms.size() - 1);
        for (std::size_t k = 0; k < transforms.size() && transforms.size() > 1; ++k) {
            const double t = static_cast<double>(k) / parts;
            gp_Trsf expected = Blended(a.euler, b.euler, t);
            expected.SetTranslationPart(gp_Vec(a.location.XYZ() * (1 - t) + b.location.XYZ() * t));
            ASSERT_THAT(transforms[k], IsTrsf(expected, Mm, Entries)) << "draw " << i << ", pose " << k;
        }
    }
}

TEST(Orientation, PosesTakeTheLargerCount) {
    const auto size = [](double distance, double posStep, double angStep) {
        const LocEuler b({distance, 0, 0}, {1, 0, 0});
        return InterpHandle::InterpolationPtsByQuaternion(LocEuler(), b, posStep, angStep).size();
    };
    EXPECT_EQ(size(10, 1, 0.25), 11U);
    EXPECT_EQ(size(10, 5, 0.1), 10U);
    EXPECT_EQ(size(9, 1, 0.1), 10U);
}

TEST(Orientation, TransformBlendMatchesTheKernel) {
    Draw draw(53);
    for (int i = 0; i < Draws::Count(); ++i) {
        gp_Trsf a = gpHandle::EulerToTrsf(Pose(draw));
        const gp_Trsf b = gpHandle::EulerToTrsf(Pose(draw));
        a.SetScaleFactor(draw.Between(0.5, 2));
        const double t = draw.Between(-0.5, 1.5);
        gp_Trsf expected;
        gp_TrsfNLerp(a, b).Interpolate(t, expected);
        ASSERT_THAT(InterpHandle::InterpolationScaleTrsf(a, b, t), IsTrsf(expected, 0, 0));
        ASSERT_THAT(InterpHandle::InterpolationScaleTrsf(a, b, 5e-8), IsTrsf(a, 0, 0));
        ASSERT_THAT(InterpHandle::InterpolationScaleTrsf(a, b, 1 - 5e-8), IsTrsf(b, 0, 0));
    }
}

} // namespace
