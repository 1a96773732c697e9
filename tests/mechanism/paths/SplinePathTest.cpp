#include <GCPnts_AbscissaPoint.hxx>
#include <GCPnts_UniformAbscissa.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <GeomAPI_ProjectPointOnCurve.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Standard_Failure.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <numbers>
#include <support/Draws.h>
#include <support/Mechanism.h>

namespace {

using Pose = std::pair<gp_Pnt, gp_Dir>;
using Path = std::vector<Pose>;

constexpr double OnCurve = 1e-6;
constexpr double EvenSpacing = 1e-3;
constexpr double SameDirection = 1e-9;
// Error (rad) of the tangent at the parameter that a projection returns for a sample.
constexpr double ProjectedDirection = 1e-6;

// The tool direction of each kind of leg: along the path, across it, or in between.
enum class Tool { Along, Against, Across, Oblique };

struct BendCase {
    const char* name = "";
    gp_Dir normal; ///< of the plane that the path bends in
    double bend;   ///< rad, per corner; its sign is left or right
    Tool tool;
};

void PrintTo(const BendCase& bend, std::ostream* out) { *out << bend.name; }

class Spline : public testing::TestWithParam<BendCase> {
protected:
    // Four poses that turn by the same angle at each corner, legs of 20, 30 and 25.
    Path MakePath() const {
        const auto& [name, normal, bend, tool] = GetParam();
        const gp_Dir first = gp_Ax2(gp_Pnt(), normal).XDirection();
        Path path;
        gp_Pnt at(3, -2, 5);
        const std::array<double, 4> legs = {20, 30, 25, 0};
        for (std::size_t i = 0; i < legs.size(); ++i) {
            const double turned = bend * static_cast<double>(std::min<std::size_t>(i, 2));
            const gp_Dir along = first.Rotated(gp_Ax1(gp_Pnt(), normal), turned);
            path.emplace_back(at, ToolOn(along, normal, tool));
            at.Translate(gp_Vec(along) * legs[i]);
        }
        return path;
    }

    static gp_Dir ToolOn(const gp_Dir& along, const gp_Dir& normal, Tool tool) {
        if (tool == Tool::Along || tool == Tool::Against) {
            const gp_Dir near = along.Rotated(gp_Ax1(gp_Pnt(), normal), 0.1);
            return tool == Tool::Along ? near : near.Reversed();
        }
        return tool == Tool::Across
                   ? normal.Rotated(gp_Ax1(gp_Pnt(), along), 0.2)
                   : gp_Dir(along.XYZ() + normal.XYZ() * 0.7 + normal.Crossed(along).XYZ() * 0.4);
    }
};

/// The tangents at both ends of a leg; the last leg uses the previous chord.
std::pair<gp_Vec, gp_Vec> Tangents(const Path& path, std::size_t i) {
    const std::size_t from = i + 2 == path.size() ? i - 1 : i;
    return {gp_Vec(path[from].first, path[from + 1].first),
            gp_Vec(path[from + 1].first, path[from + 2].first)};
}

opencascade::handle<Geom_BSplineCurve> Curve(const Path& path, std::size_t i) {
    const auto [start, end] = Tangents(path, i);
    const opencascade::handle<TColgp_HArray1OfPnt> ends = new TColgp_HArray1OfPnt(1, 2);
    ends->SetValue(1, path[i].first);
    ends->SetValue(2, path[i + 1].first);
    GeomAPI_Interpolate fit(ends, Standard_False, 0.001);
    fit.Load(start, end, Standard_True);
    fit.Perform();
    return fit.Curve();
}

// The bending axis, computed independently with plain vectors.
gp_Dir Axis(const Path& path, std::size_t i) {
    const auto [start, end] = Tangents(path, i);
    const gp_Dir u0(start);
    const gp_Dir u1(end);
    const gp_Dir& d0 = path[i].second;
    const gp_Dir& d1 = path[i + 1].second;
    const double limit = std::numbers::pi / 18;
    const auto along = [&](const gp_Dir& d, const gp_Dir& u) {
        return std::abs(d.Dot(u)) >= std::cos(limit);
    };
    const gp_XYZ first = gp_Vec(d0).Crossed(gp_Vec(u0)).XYZ();
    const gp_XYZ second = gp_Vec(d1).Crossed(gp_Vec(u1)).XYZ();
    if (along(d0, u0)) {
        return second;
    }
    return along(d1, u1) ? gp_Dir(first) : gp_Dir(first / first.Modulus() + second / second.Modulus());
}

double ParameterAt(const opencascade::handle<Geom_BSplineCurve>& curve, const gp_Pnt& point) {
    const GeomAPI_ProjectPointOnCurve projection(point, curve);
    return projection.NbPoints() > 0 ? projection.LowerDistanceParameter() : curve->LastParameter();
}

TEST_P(Spline, LongLegMatchesTheKernelsCurveAndTurnsTheTool) {
    const Path path = MakePath();
    Path dense = path;
    const double base = 3;
    InterpHandle::SplineInterpolation(dense, base);
    std::size_t next = 0;
    for (std::size_t leg = 0; leg + 1 < path.size(); ++leg) {
        const auto curve = Curve(path, leg);
        const GeomAdaptor_Curve adaptor(curve);
        // All of the kernel's evenly spaced samples except the last.
        const int samples = GCPnts_UniformAbscissa(adaptor, base).NbPoints() - 1;
        ASSERT_GE(samples, 6);
        const gp_Dir axis = Axis(path, leg);
        gp_Pnt startPoint;
        gp_Vec start;
        curve->D1(curve->FirstParameter(), startPoint, start);
        double passed = 0;
        for (int k = 0; k < samples; ++k, ++next) {
            ASSERT_LT(next, dense.size()) << "leg " << leg;
            const auto& [point, tool] = dense[next];
            const double u = k == 0 ? curve->FirstParameter() : ParameterAt(curve, point);
            ASSERT_LE(curve->Value(u).Distance(point), OnCurve) << "leg " << leg << ", sample " << k;
            const double along = GCPnts_AbscissaPoint::Length(adaptor, curve->FirstParameter(), u);
            if (k > 0) {
                EXPECT_NEAR(along - passed, base, base * EvenSpacing) << "leg " << leg << ", sample " << k;
            }
            passed = along;
            gp_Vec tangent;
            curve->D1(u, startPoint, tangent);
            const double angle = tangent.AngleWithRef(start, gp_Vec(axis));
            const gp_Dir expected =
                k == 0 ? path[leg].second : path[leg].second.Rotated(gp_Ax1(point, axis), angle);
            EXPECT_LE(tool.Angle(expected), ProjectedDirection) << "leg " << leg << ", sample " << k;
        }
    }
    EXPECT_EQ(next, dense.size()) << "the last sample of the last leg is left out";
}

const gp_Dir X(1, 0, 0);
const gp_Dir Y(0, 1, 0);
const gp_Dir Z(0, 0, 1);
const gp_Dir Space(1, -2, 0.5);

INSTANTIATE_TEST_SUITE_P(Bends, Spline,
                         testing::Values(BendCase{"XyLeftAlong", Z, 0.5, Tool::Along},
                                         BendCase{"XyRightOblique", Z, -0.5, Tool::Oblique},
                                         BendCase{"YzLeftAcross", X, 0.8, Tool::Across},
                                         BendCase{"YzRightAgainst", X, -0.8, Tool::Against},
                                         BendCase{"ZxLeftOblique", Y, 0.3, Tool::Oblique},
                                         BendCase{"ZxRightAcross", Y, -0.3, Tool::Across},
                                         BendCase{"SpaceLeftAlong", Space, 0.6, Tool::Along},
                                         BendCase{"SpaceRightAcross", Space, -0.6, Tool::Across}),
                         sample::NameOf);

TEST(SplinePath, ShortPathsAndShortLegsAreKept) {
    Path one = {{gp_Pnt(1, 2, 3), X}};
    InterpHandle::SplineInterpolation(one, 5);
    EXPECT_TRUE(one.empty());
    Path two = {{gp_Pnt(), X}, {gp_Pnt(10, 0, 0), Y}};
    InterpHandle::SplineInterpolation(two, 5);
    ASSERT_EQ(two.size(), 3U);
    EXPECT_TRUE(two[0].first.IsEqual(gp_Pnt(), 0));
    EXPECT_LE(two[1].second.Angle(gp_Dir(1, 1, 0)), SameDirection);
    EXPECT_TRUE(two[2].second.IsEqual(Y, 0));
    Path near = {{gp_Pnt(), X}, {gp_Pnt(0.05, 0, 0), Y}};
    InterpHandle::SplineInterpolation(near, 3);
    EXPECT_EQ(near.size(), 1U);
    Path straight = {{gp_Pnt(), Z}, {gp_Pnt(10, 0, 0), Z}, {gp_Pnt(20, 0, 0), Z}};
    InterpHandle::SplineInterpolation(straight, 10);
    EXPECT_EQ(straight.size(), 3U) << "a leg as long as the base is short";
    for (const double base : {-10.0, std::numeric_limits<double>::infinity(), -1e300}) {
        InterpHandle::SplineInterpolation(straight, base);
        EXPECT_EQ(straight.size(), 3U) << "squares are compared: " << base;
    }
    Path fine;
    for (int k = 0; k < 1'200'000; ++k) {
        fine.emplace_back(gp_Pnt(k, 0, 0), Z);
    }
    InterpHandle::SplineInterpolation(fine, 1);
    EXPECT_EQ(fine.size(), 1'200'000U) << "no limit on a path without a long leg";
}

TEST(SplinePath, FailureLeavesThePathUnchanged) {
    const Path good = {{gp_Pnt(), Z}, {gp_Pnt(10, 0, 0), Z}, {gp_Pnt(20, 5, 0), Z}};
    Path coincident = good;
    coincident[2].first = coincident[1].first; // the first leg has no end tangent
    Path lost = good;
    lost[1].first.SetY(std::nan(""));
    Path nowhere = good;
    nowhere[0].first.SetX(std::numeric_limits<double>::infinity());
    for (const Path& bad : {coincident, lost, nowhere}) {
        Path path = bad;
        EXPECT_THROW(InterpHandle::SplineInterpolation(path, 4), Standard_Failure);
        EXPECT_EQ(path.size(), 3U);
    }
    for (const double base : {0.0, -1.0, std::nan("")}) {
        Path path = good;
        EXPECT_THAT(Thrown([&] { InterpHandle::SplineInterpolation(path, base); }),
                    testing::HasSubstr("expected a finite spacing above 0 mm"));
        EXPECT_EQ(path.size(), 3U);
    }
}

} // namespace
