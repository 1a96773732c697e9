#include <BRepPrimAPI_MakeBox.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <host/view/TriangleModel.h>
#include <host/view/ViewShapeCollision.h>

namespace {

TEST(TriangleModel, IsBuiltOnDemandAndKeptWhileTheShapeMoves) {
    const opencascade::handle<ViewShape> model = new ViewShape(BRepPrimAPI_MakeBox(10, 10, 10).Shape());
    const opencascade::handle<ViewShape> probe = new ViewShape(BRepPrimAPI_MakeBox(10, 10, 10).Shape());
    const TopoDS_Shape face = TopExp_Explorer(model->Shape(), TopAbs_FACE).Current();
    const auto isTriangulated = [&] {
        TopLoc_Location place;
        return !BRep_Tool::Triangulation(TopoDS::Face(face), place).IsNull();
    };
    model->CreateBVHMdl(false);
    EXPECT_FALSE(isTriangulated());
    ViewShapeCollision::CalcPQPToleranceNereastPnt(model, probe, 1, 0);
    EXPECT_TRUE(isTriangulated());
    const auto tree = model->GetBVHMdl();
    model->CreateBVHMdl(true);
    EXPECT_EQ(model->GetBVHMdl(), tree);
    gp_Trsf shift;
    shift.SetTranslation(gp_Vec(5, 0, 0));
    model->SetLocalTransformation(shift);
    EXPECT_EQ(model->GetBVHMdl(), tree) << "a placement costs no tree";
    model->CreateBVHMdl(false);
    EXPECT_NE(model->GetBVHMdl(), tree);
}

// Custom aspects are what the viewer draws the colours of parts from.
TEST(ViewShape, ReplacedShapesLeaveNoCustomAspects) {
    const opencascade::handle<ViewShape> model = new ViewShape(TopoDS_Shape());
    for (double size = 1; size < 50; ++size) {
        model->SetShape(BRepPrimAPI_MakeBox(size, size, size).Shape());
        model->SetShapeLayer(TopExp_Explorer(model->Shape(), TopAbs_FACE).Current(), {.green = 0.5});
    }
    EXPECT_EQ(model->CustomAspectsMap().Extent(), 1);
}

} // namespace
