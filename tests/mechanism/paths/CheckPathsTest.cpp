#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <TopoDS_Iterator.hxx>
#include <gp_Pln.hxx>
#include <host/view/ViewShapeCollision.h>
#include <host/workpiece/ShapeEntity.h>
#include <support/Draws.h>
#include <support/Mechanism.h>

namespace {

using Groups = std::vector<std::vector<std::vector<std::array<double, 6>>>>;
using Shape = opencascade::handle<ShapeEntity>;

Shape Entity(const TopoDS_Shape& shape) { return new ShapeEntity(shape, Uuid::CreateUuid()); }

Shape Plane() { return Entity(BRepBuilderAPI_MakeFace(gp_Pln(), -100, 100, -100, 100).Face()); }

std::array<double, 6> At(const gp_Pnt& p) { return {p.X(), p.Y(), p.Z(), 0, 0, 1}; }

double Distance(const Shape& a, const Shape& b) {
    return ViewShapeCollision::CalcPQPToleranceNereastPnt(a, b, 1e6, 2).distance;
}

gp_Pnt Drawn(Draw& draw, double limit) {
    return {draw.Between(-limit, limit), draw.Between(-limit, limit), draw.Between(-limit, limit)};
}

TEST(CheckPaths, PoseBeyondTheToleranceIsErased) {
    for (const gp_Trsf& place :
         {gp_Trsf(), gpHandle::EulerToTrsf(LocEuler({400, -30, 70}, {0.3, -1.1, 2}))}) {
        const Shape face = Plane();
        face->SetTransformation(place, true);
        const auto pose = [&](double x, double z) { return At(gp_Pnt(x, 5, z).Transformed(place)); };
        Groups groups = {{{pose(0, 2), pose(1, 2.001), pose(2, -2), pose(3, 0), pose(4, -2.001)},
                          {pose(0, 3), pose(103, 0)}},
                         {}};
        InterpHandle::CheckPathsOnFace(groups, face, 2);
        ASSERT_EQ(groups.size(), 2U) << "empty groups stay";
        ASSERT_EQ(groups[0].size(), 1U) << "empty paths go";
        const std::vector<std::array<double, 6>> kept = {pose(0, 2), pose(2, -2), pose(3, 0)};
        EXPECT_EQ(groups[0][0], kept);
    }
}

TEST(CheckPaths, MissingSurfaceIsRefusedAndNonFinitePosesAreErased) {
    Groups groups = {{{At({0, 0, 0})}}};
    EXPECT_THROW(InterpHandle::CheckPathsOnFace(groups, nullptr, 1), std::invalid_argument);
    EXPECT_THROW(InterpHandle::CheckPathsOnFace(groups, Entity(TopoDS_Shape()), 1), std::invalid_argument);
    EXPECT_EQ(groups[0].size(), 1U);
    groups[0][0].push_back({std::nan(""), 0, 0, 0, 0, 1});
    InterpHandle::CheckPathsOnFace(groups, Plane(), 1);
    EXPECT_EQ(groups[0][0].size(), 1U);
    InterpHandle::CheckPathsOnFace(groups, Plane(), std::nan(""));
    EXPECT_EQ(groups[0][0].size(), 1U) << "nothing is farther than a tolerance that is no number";
    InterpHandle::CheckPathsOnFace(groups, Plane(), -1);
    EXPECT_TRUE(groups[0].empty());
}

// The kernel's exact distances; curved faces may differ by their deflection.
TEST(Distances, MatchTheKernelsExtrema) {
    constexpr double deflection = 0.05;
    const TopoDS_Shape cylinder = BRepPrimAPI_MakeCylinder(50, 200).Shape();
    const Shape solid = Entity(cylinder);
    Draw draw(71);
    for (int i = 0; i < Draws::Count() / 10; ++i) {
        const gp_Trsf place = gpHandle::EulerToTrsf(LocEuler(Drawn(draw, 200), Drawn(draw, 3)));
        solid->SetTransformation(place, true);
        const gp_Pnt point = Drawn(draw, 200);
        const Shape probe = Entity(BRepBuilderAPI_MakeVertex(point).Shape());
        // The kernel measures to a filled solid, triangles are its surface: measure to the shell.
        const TopoDS_Shape skin = TopoDS_Iterator(cylinder).Value().Moved(TopLoc_Location(place));
        const BRepExtrema_DistShapeShape exact(BRepBuilderAPI_MakeVertex(point).Shape(), skin);
        ASSERT_NEAR(Distance(probe, solid), exact.Value(), deflection) << "draw " << i;
    }
    const Shape box = Entity(BRepPrimAPI_MakeBox(10, 20, 30).Shape());
    const Shape other = Entity(BRepPrimAPI_MakeBox(5, 5, 5).Shape());
    for (int i = 0; i < Draws::Count() / 40; ++i) {
        const gp_Trsf place = gpHandle::EulerToTrsf(LocEuler(Drawn(draw, 40), Drawn(draw, 3)));
        other->SetTransformation(place, true);
        const BRepExtrema_DistShapeShape exact(
            TopoDS_Iterator(box->Shape()).Value(),
            TopoDS_Iterator(other->Shape()).Value().Moved(TopLoc_Location(place)));
        ASSERT_NEAR(Distance(box, other), exact.Value(), 1e-6) << "draw " << i;
    }
}

} // namespace
