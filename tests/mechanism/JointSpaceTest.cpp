#include <support/Mechanism.h>

namespace {

using namespace InterpHandle;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using Joints = std::vector<double>;

constexpr std::uint64_t System = 91;
/// Rounding of a few operations on numbers around ten.
constexpr double Rounding = 1e-14;

struct StateInterpolation : testing::Test {
    Registrar registrar{System, {.pedestal = 1}};
    GrpState a{System}, b{System};
    const Joints unit = Joints(7, 1);

    void SetUp() override {
        a.SetLocEuler(0, {gp_Pnt(0, 0, 3), gp_Pnt()});
        a.SetToolIndex(4);
    }
    std::vector<GrpState> After(double change) {
        b.SetValue(Robot, 0, change);
        return InterpolationPts(a, b, unit);
    }
};

double First(const GrpState& state) { return state.GetValue(Robot, ARM_J1); }
double First(const gp_Pnt& point) { return point.X(); }

template <class T>
Joints Firsts(const std::vector<T>& sequence) {
    Joints firsts(sequence.size());
    std::transform(sequence.begin(), sequence.end(), firsts.begin(), [](const T& t) { return First(t); });
    return firsts;
}

TEST_F(StateInterpolation, CountIsTheWholeStepsOfTheDecidingAxis) {
    EXPECT_THAT(Firsts(After(-1.99)), ElementsAre(0, -1.99));
    EXPECT_THAT(Firsts(After(2.9)), ElementsAre(0, 1.45, 2.9));
    EXPECT_THAT(Firsts(After(3)), ElementsAre(0, 1, 2, 3));
    b.SetValue(Pedestal, 0, 40);
    EXPECT_EQ(InterpolationPts(a, b, {1, 1, 1, 1, 1, 1, 10}).size(), 5U) << "the pedestal decides";
    EXPECT_EQ(InterpolationPts(a, b, {1, 1, 1, 1, 1, 1, 0}).size(), 4U) << "a zero step asks for nothing";
}

TEST_F(StateInterpolation, InteriorStatesCarryValuesOnlyAndKeyStatesOccurOnce) {
    b.SetValue(Pedestal, 0, 6);
    const auto states = After(3);
    EXPECT_EQ(GrpState(states[1]).GetValues(), Joints({0.5, 0, 0, 0, 0, 0, 1}));
    EXPECT_EQ(states[1].GetSystem(), System);
    b.SetValue(Pedestal, 0, 0);
    EXPECT_EQ(states[1].GetToolIndex(), 0);
    EXPECT_TRUE(states[1].GetLocEuler(0) == LocEuler());
    EXPECT_EQ(states.front().GetLocEuler(0).location.Z(), 3);

    b.SetValue(Robot, 0, 2);
    GrpState c(b);
    c.SetValue(Robot, 0, 4);
    EXPECT_THAT(Firsts(InterpolationPts({a, b, c}, unit)), ElementsAre(0, 1, 2, 3, 4));
    EXPECT_THAT(Firsts(InterpolationPts({a, a, b}, unit)), ElementsAre(0, 0, 1, 2));
    EXPECT_THAT(InterpolationPts({a}, unit), IsEmpty());
    EXPECT_EQ(Thrown([&] { InterpolationPts(std::vector<GrpState>(), unit); }), "invalid vector subscript");
}

TEST_F(StateInterpolation, ToolCentreGapsCountWholeMillimetres) {
    const struct {
        double distance, gap;
        std::size_t size;
    } cases[] = {{4.99, 5, 2}, {5, 5, 3}, {9.9, 4.95, 3}, {10, 5, 4}, {10, -1, 2}, {10, 0, 2}};
    for (const auto& [distance, gap, size] : cases) {
        b.SetLocEuler(0, {gp_Pnt(0, distance, 3), gp_Pnt()});
        EXPECT_EQ(InterpolationPtsByPosGap(a, b, gap).size(), size) << distance << ", " << gap;
    }
    b.SetValue(Robot, 0, 3);
    b.SetLocEuler(0, {gp_Pnt(10, 0, 3), gp_Pnt(0.6, 0, 0)});
    const auto states = InterpolationPtsByPosGap(a, b, 10);
    EXPECT_THAT(Firsts(states), ElementsAre(0, 1.5, 3));
    EXPECT_EQ(states[1].GetToolIndex(), 4);
    EXPECT_NEAR(states[1].GetLocEuler(0).location.X(), 5, Rounding);
    EXPECT_NEAR(states[1].GetLocEuler(0).euler.X(), 0.3, Rounding);

    const GrpState beyond = InterpolationScalePts(a, b, 1.5);
    EXPECT_EQ(beyond.GetValue(Robot, ARM_J1), 4.5);
    EXPECT_TRUE(beyond.GetLocEuler(0) == a.GetLocEuler(0));
}

TEST(PointInterpolation, StepsAreRoundedToEvenParts) {
    const auto byStep = [](double length, double step) {
        return Firsts(InterpolationPts(gp_Pnt(), gp_Pnt(length, 0, 0), step));
    };
    EXPECT_THAT(byStep(0.099, 0.01), ElementsAre(0));
    EXPECT_THAT(byStep(0.1, 0.2), ElementsAre(0, 0.1)) << "a half is rounded up";
    EXPECT_THAT(byStep(10, 0.0009), ElementsAre(0));
    EXPECT_EQ(byStep(1, 0.001).size(), 1001U);
    EXPECT_THAT(byStep(1, 2.01), ElementsAre(1));
    EXPECT_THAT(byStep(9, 3), ElementsAre(0, DoubleNear(3, Rounding), DoubleNear(6, Rounding), 9));
}

TEST(PointInterpolation, CountsAreExact) {
    const auto byNum = [](double length, int n) {
        return Firsts(InterpolationPtsByNum(gp_Pnt(1, 0, 0), gp_Pnt(1 + length, 0, 0), n));
    };
    EXPECT_THAT(byNum(4, 0), ElementsAre(1));
    EXPECT_THAT(byNum(4, 1), ElementsAre(5));
    EXPECT_THAT(byNum(4, 5), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(byNum(0.9e-6, 4), ElementsAre(1, 1, 1, 1));
    EXPECT_EQ(byNum(1.1e-6, 4).back(), 1 + 1.1e-6);
}

TEST(Interpolation, CountsBeyondAMillionAreExact) {
    constexpr int Million = 1'000'000;
    EXPECT_EQ(InterpHandle::InterpolationPts(gp_Pnt(), gp_Pnt(1500, 0, 0), 0.001).size(), 1500001U);
    EXPECT_EQ(InterpHandle::InterpolationPtsByNum(gp_Pnt(), gp_Pnt(1, 0, 0), Million + 1).size(),
              Million + 1U);
    EXPECT_EQ(InterpHandle::InterpolationPtsByNum({0}, {1}, Million + 1).size(), Million + 3U);
    std::vector<std::vector<double>> polyline, filled;
    for (int k = 0; k < 1'200'000; ++k) {
        polyline.push_back({static_cast<double>(k)});
    }
    InterpHandle::EquallyDisInterpolate(polyline, filled, 1);
    EXPECT_EQ(filled, polyline) << "vectors one step apart";
    const Registrar registrar(7, {});
    const std::vector<GrpState> keys(1'100'000, GrpState(7));
    EXPECT_EQ(InterpHandle::InterpolationPts(keys, std::vector<double>(6, 1)).size(), keys.size());
}

TEST(JointInterpolation, LastVectorIsDoubled) {
    const auto byNum = [](int n) { return InterpolationPtsByNum({1, 0}, {3, 4}, n); };
    EXPECT_THAT(byNum(2), ElementsAre(Joints{1, 0}, Joints{2, 2}, Joints{3, 4}, Joints{3, 4}));
    EXPECT_THAT(byNum(-1), ElementsAre(Joints{3, 4}));
    EXPECT_THAT(byNum(0), ElementsAre(ElementsAre(testing::IsNan(), testing::IsNan()), Joints{3, 4}));
    EXPECT_THAT(InterpolationPtsByNum({1}, {1, 2}, 3), IsEmpty());
}

TEST(JointInterpolation, UniformStepsLeaveTheRemainderToTheEnd) {
    for (const double step : {2.0, -2.0}) {
        EXPECT_THAT(InterpolationPtsDescartes({0, 1}, {5, 0}, step),
                    ElementsAre(Joints{0, 1}, Joints{2, 0.6}, Joints{4, 1 + 2 * -1 / 2.5}, Joints{5, 0}));
    }
    EXPECT_EQ(InterpolationPtsDescartes({0, 0}, {1, 4}, 2).size(), 3U);
    EXPECT_THAT(InterpolationPtsDescartes({0}, {1}, -0.0009), IsEmpty());
    EXPECT_EQ(InterpolationPtsDescartes({0}, {0.002}, 0.001).size(), 3U);
    EXPECT_THAT(InterpolationPtsDescartes({0}, {1, 2}, 1), IsEmpty());
}

TEST(JointInterpolation, PolylinesAreFilledAndAppended) {
    const auto rail = [](double x) { return Joints{0, 0, 0, 0, 0, 0, x}; };
    std::vector<Joints> out{{42}};
    EquallyDisInterpolate({rail(0), rail(3000), rail(3000)}, out, 1);
    EXPECT_THAT(out, ElementsAre(Joints{42}, rail(0), rail(1000), rail(2000), rail(3000), rail(3000)));
    out.clear();
    EquallyDisInterpolate({{1}}, out, 1);
    EquallyDisInterpolate({{0}, {-2.5}, {-4.5}}, out, 2);
    EXPECT_THAT(out, ElementsAre(Joints{0}, Joints{-2}, Joints{-2.5}, Joints{-4.5})) << "one whole step last";
    EquallyDisInterpolate({{0}, {6}}, out, 0);
    EXPECT_EQ(out.size(), 6U);
    EquallyDisInterpolate({{0}, {0.5}}, out, 0.25);
    EXPECT_EQ(out.size(), 9U);
}

} // namespace
