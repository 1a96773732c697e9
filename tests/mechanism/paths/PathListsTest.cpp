#include <Standard_ConstructionError.hxx>
#include <support/Mechanism.h>

namespace {

using testing::ElementsAre;

std::vector<std::array<double, 6>> OnX(const std::vector<double>& xs) {
    std::vector<std::array<double, 6>> arrays;
    for (const double x : xs) {
        arrays.push_back({x, 0, 0, 0, 0, -3});
    }
    return arrays;
}

template <class Path>
std::vector<double> XsOf(const Path& path) {
    std::vector<double> xs;
    for (const auto& [point, direction] : path) {
        xs.push_back(point.X());
    }
    return xs;
}

TEST(PathLists, PoseCloserThanOneMillimetreToTheNextIsDropped) {
    EXPECT_THAT(XsOf(InterpHandle::ArrayToPathPair(OnX({0, 0.5, 2, 3}))), ElementsAre(0.5, 2, 3));
    EXPECT_THAT(XsOf(InterpHandle::ArrayToPathPair(OnX({0, 1, 1.9999, 2}))), ElementsAre(0, 2));
    EXPECT_EQ(InterpHandle::ArrayToPathPair(OnX({4}))[0].second.Z(), -1) << "directions come out as units";
    EXPECT_TRUE(InterpHandle::ArrayToPathPair({{1, 2, 3, 1, 2, 4}})[0].second.IsEqual(gp_Dir(1, 2, 4), 0));
    EXPECT_THROW(InterpHandle::ArrayToPathPair({}), std::out_of_range);
    EXPECT_THROW(InterpHandle::ArrayToPathPair({{0, 0, 0, 0, 0, 0}}), Standard_ConstructionError);
}

TEST(PathLists, ThinningKeepsBothEndsAndEveryKthPose) {
    const auto path = InterpHandle::ArrayToPathPair(OnX({0, 1, 2, 3, 4, 5, 6}));
    EXPECT_THAT(XsOf(InterpHandle::SparsePathPair(path, 2)), ElementsAre(0, 2, 4, 6));
    EXPECT_THAT(XsOf(InterpHandle::SparsePathPair(path, 1)), ElementsAre(0, 1, 2, 3, 4, 5, 6));
    for (const int step : {6, 10, -1, -2147483647 - 1}) {
        EXPECT_THAT(XsOf(InterpHandle::SparsePathPair(path, step)), ElementsAre(0, 6));
    }
    EXPECT_THAT(XsOf(InterpHandle::SparsePathPair({path[3]}, 2)), ElementsAre(3, 3));
    EXPECT_THROW(InterpHandle::SparsePathPair({}, 2), std::invalid_argument);
    EXPECT_THROW(InterpHandle::SparsePathPair(path, 0), std::invalid_argument);
}

TEST(PathLists, ArraySpacingIsAtLeastOneMillimetre) {
    auto fine = OnX({0, 10});
    auto one = fine;
    InterpHandle::SplineInterpolationArry(fine, 0.5);
    InterpHandle::SplineInterpolationArry(one, 1.0);
    EXPECT_EQ(fine, one);
    EXPECT_EQ(fine.size(), 11U);
    auto wide = OnX({0, 10, 200});
    InterpHandle::SplineInterpolationArry(wide, std::numeric_limits<double>::infinity());
    EXPECT_THAT(XsOf(InterpHandle::ArrayToPathPair(wide)), ElementsAre(0, 10, 200)) << "no leg is longer";
    auto crowded = OnX({0, 0.2});
    InterpHandle::SplineInterpolationArry(crowded, 1.0);
    EXPECT_EQ(crowded, OnX({0, 0.2})) << "one pose is left, which smooths to nothing: the arrays stay";
}

} // namespace
