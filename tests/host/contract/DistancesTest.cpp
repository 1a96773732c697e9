#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <TopExp_Explorer.hxx>
#include <cmath>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <host/view/ViewShapeCollision.h>

namespace {

using opencascade::handle;
using ViewShapeCollision::CalcPQPToleranceNereastPnt;

constexpr int First = 0;
constexpr int Least = 1;
/// A few products of numbers of metres.
constexpr double Rounding = 1e-9;
/// How far (mm) what is measured may leave a curved surface.
constexpr double Deflection = 0.05;

TopoDS_Shape Block(double size, double x) {
    return BRepPrimAPI_MakeBox(gp_Pnt(x, 0, 0), size, size, size).Shape();
}

gp_Trsf Shift(double x) {
    gp_Trsf shift;
    shift.SetTranslation(gp_Vec(x, 0, 0));
    return shift;
}

class Distances : public testing::Test {
protected:
    double ToProbe() const { return CalcPQPToleranceNereastPnt(model, probe, 1e6, Least).distance; }

    const handle<ViewShape> model = new ViewShape(Block(10, 0));
    const handle<ViewShape> probe = new ViewShape(Block(10, 100));
};

TEST_F(Distances, FollowGeometryPlacementAndStandIn) {
    EXPECT_NEAR(ToProbe(), 90, Rounding);
    model->SetShape(Block(20, 0));
    EXPECT_NEAR(ToProbe(), 80, Rounding);
    model->MoveGeometry(Shift(5));
    EXPECT_NEAR(ToProbe(), 75, Rounding);
    model->SetLocalTransformation(Shift(-5));
    EXPECT_NEAR(ToProbe(), 80, Rounding);
    model->CreateBVHMdl(Block(1, 0), false);
    model->SetShape(Block(30, 0));
    EXPECT_NEAR(ToProbe(), 104, Rounding) << "another shape stands in and stays";
    model->CreateBVHMdl(Block(2, 0), true);
    EXPECT_NEAR(ToProbe(), 104, Rounding) << "the stand-in is kept";
    model->CreateBVHMdl(false);
    EXPECT_NEAR(ToProbe(), 75, Rounding);
}

TEST_F(Distances, BeyondTheToleranceAreNotFound) {
    for (const int mode : {First, Least}) {
        for (const double tolerance : {90.0, 90.0 - 1e-10, 200.0}) {
            const auto found = CalcPQPToleranceNereastPnt(model, probe, tolerance, mode);
            EXPECT_TRUE(found.within) << tolerance;
            EXPECT_LE(found.distance, tolerance);
        }
        const auto missed = CalcPQPToleranceNereastPnt(model, probe, 90 - 1e-6, mode);
        EXPECT_FALSE(missed.within);
        EXPECT_TRUE(std::isinf(missed.distance));
    }
    EXPECT_FALSE(CalcPQPToleranceNereastPnt(model, probe, std::nan(""), Least).within);
    EXPECT_THROW(CalcPQPToleranceNereastPnt(model, {}, 1, Least), std::invalid_argument);
    EXPECT_THROW(CalcPQPToleranceNereastPnt(model, new ViewShape(TopoDS_Shape()), 1, Least),
                 std::invalid_argument);
}

TEST_F(Distances, PointsAndCurvedFacesAreMeasured) {
    const handle<ViewShape> column = new ViewShape(BRepPrimAPI_MakeCylinder(30, 100).Shape());
    const handle<ViewShape> point = new ViewShape(TopoDS_Shape());
    point->CreateBVHMdl(BRepBuilderAPI_MakeVertex(gp_Pnt()).Vertex(), false);
    for (const double angle : {0.1, 0.7, 2.0, 5.5}) {
        gp_Trsf place;
        place.SetTranslation(gp_Vec(200 * std::cos(angle), 200 * std::sin(angle), 50));
        point->SetLocalTransformation(place);
        const double distance = CalcPQPToleranceNereastPnt(column, point, 1e6, Least).distance;
        EXPECT_NEAR(distance, 170, Deflection) << angle;
        EXPECT_EQ(CalcPQPToleranceNereastPnt(point, column, 1e6, Least).distance, distance) << "symmetric";
    }
}

TEST_F(Distances, LayersAreThoseOfThePartsThatAreThere) {
    const auto faceOf = [&] { return TopExp_Explorer(model->Shape(), TopAbs_FACE).Current(); };
    for (const double size : {1.0, 49.0}) {
        model->SetShape(Block(size, 0));
        model->SetShapeColorLayer({.red = size / 50});
        model->SetShapeLayer(faceOf(), {.green = 0.5});
        model->SetShapeLayer(faceOf(), {.green = size / 50});
        model->MoveGeometry(Shift(5));
    }
    const auto& layers = model->GetLayers();
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_TRUE(layers[0].first.IsEqual(model->Shape()));
    EXPECT_EQ(layers[0].second.red, 49.0 / 50);
    EXPECT_TRUE(layers[1].first.IsEqual(faceOf())) << "moved along";
    EXPECT_EQ(layers[1].second.green, 49.0 / 50);
}

} // namespace
