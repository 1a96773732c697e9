#include <BRepBuilderAPI_Transform.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <Bnd_OBB.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <cmath>
#include <gp.hxx>
#include <gp_Ax2.hxx>
#include <host/tools/ShapeHandle.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <numbers>

namespace {

constexpr double EdgeRadius = 600.0;
/// Room needed along an edge: two roundings and a flat strip between them.
constexpr double LeastRoundedWidth = 1210.0;
constexpr double VerticalCone = 0.08726646259971647;

bool IsVertical(const TopoDS_Edge& edge) {
    TopoDS_Vertex first;
    TopoDS_Vertex last;
    TopExp::Vertices(edge, first, last);
    const double angle = gp_Vec(BRep_Tool::Pnt(first), BRep_Tool::Pnt(last)).Angle(gp::DZ());
    return angle < VerticalCone || std::numbers::pi - angle < VerticalCone;
}

TopoDS_Shape WithRoundedEdges(const TopoDS_Shape& box) {
    BRepFilletAPI_MakeFillet fillet(box, ChFi3d_Rational);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(box, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        if (const TopoDS_Edge& edge = TopoDS::Edge(edges(i)); IsVertical(edge)) {
            fillet.Add(EdgeRadius, edge);
        }
    }
    return fillet.Shape();
}

TopoDS_Shape CreateInvertedWorkspace(const WorkSpace::Robot& record) {
    const auto k = WorkSpace::GetInvertedRobotWorkSpace(record);
    Bnd_Box bounds;
    bounds.Add(gp_Pnt(k[0], k[1], k[2]));
    bounds.Add(gp_Pnt(k[3], k[4], k[5]));
    const TopoDS_Shape box = ShapeHandle::BndOBBGetTopoShape(Bnd_OBB(bounds));
    const bool wide =
        std::abs(k[0] - k[3]) >= LeastRoundedWidth && std::abs(k[1] - k[4]) >= LeastRoundedWidth;
    return !box.IsNull() && !record.upright && wide ? WithRoundedEdges(box) : box;
}

TopoDS_Shape Mirrored(const TopoDS_Shape& shape, const gp_Pnt& base) {
    gp_Trsf mirror;
    mirror.SetMirror(gp_Ax2(base, gp::DY()));
    return BRepBuilderAPI_Transform(shape, mirror, Standard_True).Shape();
}

} // namespace

TopoDS_Shape RobotWorkspace::BuildBox(const WorkSpace::Robot& record, bool mirrorable) {
    if (WorkSpace::IsEuqal(robotData, record)) {
        return TopoDS::Compound(workspaceShape);
    }
    TopoDS_Shape box = CreateInvertedWorkspace(record);
    if (box.IsNull()) {
        return {};
    }
    const gp_Trsf base = robot->GetRobotAssembleTrsf();
    box.Location(TopLoc_Location(base) * box.Location(), Standard_True);
    CutShape(box);
    trimmedBox = box;
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    builder.Add(compound, box);
    if (mirrorable && managerNum == 2) {
        builder.Add(compound, Mirrored(compound, gp_Pnt(base.TranslationPart())));
    }
    return compound;
}
