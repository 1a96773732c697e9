#include "Rail.h"

#include <Bnd_OBB.hxx>
#include <functional>
#include <support/Failure.h>

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

/// Rounding of products of a few unit directions.
constexpr double Rounding = 1e-12;
constexpr double Right = 1.5707963267948966;

class Pedestal : public testing::Test {
protected:
    void Stand(std::uint64_t first, std::uint64_t second) {
        rail.Stand(near, first);
        rail.Stand(far, second);
        rail.Initial();
        gp_Trsf turned;
        turned.SetRotation(gp::OZ(), Right);
        rail.SetRootMdlTrsf(turned);
    }

    const gp_Dir oblique{0, 0.6, 0.8};
    Rail rail;
    LinkRod* const near = rail.Add(1);
    LinkRod* const top = rail.Add(10, nullptr, gp::DY());
    LinkRod* const far = rail.Add(11, top, oblique);
};

TEST_F(Pedestal, WithoutSystemsQueriesUseAllLinks) {
    rail.Initial();
    rail.SetCurrentValue({1, 2, 3}, 5);
    EXPECT_THAT(rail.GetCurrentValue(5), ElementsAre(1, 2, 3));
    EXPECT_EQ(rail.GetDOF(5), 3);
    EXPECT_EQ(rail.GetLimit(5, 10)[2], (std::pair{10.0, 90.0}));
    EXPECT_THROW(rail.IsInLimit({1, 2, 3}, 5, 0), std::string) << "this one needs a run";
}

TEST_F(Pedestal, SystemValuesAreASliceOfAllValues) {
    Stand(70, 80);
    EXPECT_EQ(rail.GetSystem(top), 80U) << "the link behind the other's run";
    rail.SetCurrentValue({7, 8, 99}, 80);
    rail.SetCurrentValue({}, 80);
    rail.SetCurrentValue({7, 8}, 80);
    EXPECT_THROW(rail.SetCurrentValue({1}, 80), std::invalid_argument);
    EXPECT_THAT(rail.GetCurrentValue(0), ElementsAre(0, 7, 8));
    rail.SetCurrentValue({4, 5, 6}, 0);
    EXPECT_THAT(rail.GetCurrentValue(80), ElementsAre(7, 8)) << "the whole does not reach the slices";
    rail.UpdateState();
    EXPECT_THAT(rail.GetCurrentValue(80), ElementsAre(0, 0)) << "no link was moved by all this";
}

TEST_F(Pedestal, SystemZeroIsAddressedAsTheWholePedestal) {
    far->value = 8;
    Stand(70, 0);
    EXPECT_EQ(rail.GetCurrentValueData(0).start, 1U);
    EXPECT_THAT(rail.GetCurrentValue(0), ElementsAre(0, 8, 8)) << "not 0, 0, 8";
}

TEST_F(Pedestal, LimitsAreThoseOfTheSystemsLinks) {
    near->limit = {0, 1};
    Stand(70, 80);
    EXPECT_EQ(rail.GetLimit(0, 0).size(), static_cast<std::size_t>(rail.GetLinkSize()))
        << "the pedestal as a whole";
    EXPECT_THAT(rail.GetLimit(80, 50), ElementsAre(std::pair{50.0, 50.0}, std::pair{50.0, 50.0}));
    EXPECT_TRUE(rail.IsInLimit({100, 0, -1}, 80, 0));
    EXPECT_FALSE(rail.IsInLimit({101}, 80, 0)) << "decided before the values run out";
    EXPECT_EQ(Thrown([&] { rail.IsInLimit({50}, 80, 0); }), "invalid vector subscript");
    EXPECT_TRUE(rail.IsInLimit({}, 555, 0)) << "nothing to look at";
    EXPECT_FALSE(rail.IsInLimit({2, 50, 50}, 0, 0)) << "the pedestal as a whole";
}

TEST_F(Pedestal, FailuresCarryTheStatedTextsAndLines) {
    Stand(70, 80);
    const std::string unknown = "map传入key错误，数据不在范围内";
    const std::tuple<std::function<void()>, int, std::string, std::string, std::string> cases[] = {
        {[&] { rail.GetDOF(5); }, 166, "", "GetCurrentValue", unknown},
        {[&] { rail.GetLimit(5, 0); }, 166, "", "GetCurrentValue", unknown},
        {[&] { rail.GetCurrentValueData(0); }, 28, "stalEntity", "GetCurrentValueData", unknown},
        {[&] { rail.GetMaxAxisDir(5); }, 28, "stalEntity", "GetCurrentValueData", unknown},
        {[&] { rail.GetLimit(80, 50.1); }, 227, "", "GetLimit", "限位错误"}};
    for (const auto& [ask, line, where, name, message] : cases) {
        const std::string function = "PedestalEntity::" + name;
        EXPECT_EQ(ExpectFailure(ask, "PedestalEntity", function, message), line);
        EXPECT_EQ(Thrown(ask), where + function + message);
    }
}

TEST_F(Pedestal, SpeedsAndTranslationsAreSplitOverTheAxes) {
    Stand(70, 80);
    const double speeds[] = {10, 5};
    EXPECT_TRUE(rail.GetSpeedValue(speeds, 80).IsEqual(gp_XYZ(-13, 0, 4), Rounding));
    top->jointType = JointRotary;
    EXPECT_EQ(rail.GetSpeedValue(speeds, 80).Modulus(), 0.0) << "linear axes behind another do not count";
    gp_Trsf target;
    target.SetTranslation(gp_Vec(7, 20, 10));
    EXPECT_TRUE(rail.GetStateValue(target, 80).IsEqual(gp_XYZ(0, 32, 8), Rounding)) << "by component";
    const auto axis = rail.GetAxes(80).at(1);
    EXPECT_TRUE(gp_XYZ(axis[0], axis[1], axis[2]).IsEqual(gp_XYZ(1, 2, 3), 0));
    EXPECT_TRUE(gp_XYZ(axis[5], axis[8], axis[11]).IsEqual(oblique.XYZ(), Rounding));
}

TEST_F(Pedestal, LongestAxisAndBoxScalesFollowTheRules) {
    EXPECT_TRUE(Rail().GetMaxAxisDir(5).IsEqual(gp::DX(), 0)) << "no links: nobody asks which system";
    Stand(70, 80);
    EXPECT_TRUE(rail.GetMaxAxisDir(80).IsEqual(gp::DY(), 0));
    far->limit = {-1, 100};
    EXPECT_TRUE(rail.GetMaxAxisDir(80).IsEqual(oblique, 0));
    top->limit = far->limit = {0, 0};
    EXPECT_TRUE(rail.GetMaxAxisDir(80).IsEqual(gp::DX(), 0));
    EXPECT_THAT(rail.GetPathBoxOffsetScale(Bnd_OBB(), 80), ElementsAre(1, 1));
    // In the pedestal's frame: 20 along X, 10 along Y, 40 against Z.
    const Bnd_OBB box({}, gp_Dir(-1, 0, 0), gp_Dir(0, 1, 0), gp_Dir(0, 0, -1), 10, 20, 40);
    EXPECT_THAT(rail.GetPathBoxOffsetScale(box, 70), ElementsAre(DoubleNear(0.5, Rounding)));
    EXPECT_THAT(rail.GetPathBoxOffsetScale(box, 80),
                ElementsAre(DoubleNear(0.25, Rounding), DoubleNear(0.6 * 0.25 - 0.8, Rounding)));
}

} // namespace
