#include <BRepPrimAPI_MakeBox.hxx>
#include <Geom_Line.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <gtest/gtest.h>
#include <host/tools/GeoCurve.h>

namespace {

GeoCurve Sample() {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(1, 2, 3).Shape();
    TopExp_Explorer faces(box, TopAbs_FACE);
    GeoCurve curve;
    curve.first = new Geom_Line(gp::OX());
    curve.GetTruncatedPlane()[0] = TopoDS::Face(faces.Current());
    faces.Next();
    curve.GetTruncatedPlane()[1] = TopoDS::Face(faces.Current().Reversed());
    curve.values[1] = 77;
    curve.text = "seam";
    curve.oriTopoEdge = TopoDS::Edge(TopExp_Explorer(box, TopAbs_EDGE).Current().Reversed());
    curve.SetCurveEdgeType(static_cast<EdgeType>(4711));
    return curve;
}

void ExpectSame(GeoCurve copy, GeoCurve& original) {
    EXPECT_EQ(copy.first, original.first);
    EXPECT_EQ(copy.second, original.second);
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(copy.GetTruncatedPlane()[i].IsEqual(original.GetTruncatedPlane()[i])) << i;
    }
    EXPECT_EQ(copy.values[1], 77U);
    EXPECT_EQ(copy.text, "seam");
    EXPECT_EQ(copy.GetCurveEdgeType(), 4711);
    EXPECT_TRUE(copy.GetOriTopoEdge().IsEqual(original.GetOriTopoEdge()));
}

TEST(GeoCurve, CopyingSharesTopologyAndHandles) {
    GeoCurve original = Sample();
    ExpectSame(original, original);
    GeoCurve assigned;
    assigned.first = new Geom_Line(gp::OY());
    assigned = original;
    ExpectSame(assigned, original);
    EXPECT_EQ(original.first->GetRefCount(), 2) << "the original's and the assigned one's";
    const GeoCurve& itself = assigned;
    assigned = itself;
    ExpectSame(assigned, original);
}

} // namespace
