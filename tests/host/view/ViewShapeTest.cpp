#include <BRepPrimAPI_MakeBox.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gtest/gtest.h>
#include <host/view/TriangleModel.h>
#include <host/view/ViewShapeCollision.h>

namespace {

constexpr int Any = 1;

TopoDS_Shape Block(double size, double x) {
    return BRepPrimAPI_MakeBox(gp_Pnt(x, 0, 0), size, size, size).Shape();
}

gp_Trsf Shift(double x) {
    gp_Trsf shift;
    shift.SetTranslation(gp_Vec(x, 0, 0));
    return shift;
}

class View : public testing::Test {
protected:
    double DistanceToProbe() const {
        return ViewShapeCollision::CalcPQPToleranceNereastPnt(model, probe, 1e6, Any).distance;
    }
    bool IsTriangulated() const {
        TopLoc_Location place;
        const TopoDS_Shape face = TopExp_Explorer(model->Shape(), TopAbs_FACE).Current();
        return !BRep_Tool::Triangulation(TopoDS::Face(face), place).IsNull();
    }

    const opencascade::handle<ViewShape> model = new ViewShape(Block(10, 0));
    const opencascade::handle<ViewShape> probe = new ViewShape(Block(10, 100));
};

TEST_F(View, TreeIsBuiltByTheFirstDistanceQuery) {
    model->CreateBVHMdl(false);
    EXPECT_FALSE(IsTriangulated());
    EXPECT_EQ(DistanceToProbe(), 90);
    EXPECT_TRUE(IsTriangulated());
    const auto tree = model->GetBVHMdl();
    model->CreateBVHMdl(true);
    EXPECT_EQ(model->GetBVHMdl(), tree);
    model->CreateBVHMdl(false);
    EXPECT_NE(model->GetBVHMdl(), tree);
}

TEST_F(View, DistancesFollowTheCurrentGeometry) {
    EXPECT_EQ(DistanceToProbe(), 90);
    model->SetShape(Block(20, 0));
    EXPECT_EQ(DistanceToProbe(), 80);
    model->MoveGeometry(Shift(5));
    EXPECT_EQ(DistanceToProbe(), 75);
    const auto tree = model->GetBVHMdl();
    model->SetLocalTransformation(Shift(-5));
    EXPECT_EQ(DistanceToProbe(), 80);
    EXPECT_EQ(model->GetBVHMdl(), tree) << "a place costs no tree";
    model->CreateBVHMdl(Block(1, 0), false);
    model->SetShape(Block(30, 0));
    EXPECT_EQ(DistanceToProbe(), 104) << "the triangles of another shape stay";
    model->CreateBVHMdl(false);
    EXPECT_EQ(DistanceToProbe(), 75);
}

TEST_F(View, LayersFollowTheCurrentParts) {
    const auto faceOf = [&] { return TopExp_Explorer(model->Shape(), TopAbs_FACE).Current(); };
    for (double size = 1; size < 50; ++size) {
        model->SetShape(Block(size, 0));
        model->SetShapeColorLayer({.red = size / 50});
        model->SetShapeLayer(faceOf(), {.green = 0.5});
        model->SetShapeLayer(faceOf(), {.green = size / 50});
    }
    const auto& layers = model->GetLayers();
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_TRUE(layers[0].first.IsSame(model->Shape()));
    EXPECT_EQ(layers[0].second.red, 49.0 / 50);
    EXPECT_TRUE(layers[1].first.IsSame(faceOf()));
    EXPECT_EQ(layers[1].second.green, 49.0 / 50);
    EXPECT_EQ(model->CustomAspectsMap().Extent(), 1) << "colours of shapes that are gone";
}

} // namespace
