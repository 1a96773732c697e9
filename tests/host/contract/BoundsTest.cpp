#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <gtest/gtest.h>
#include <host/view/VisibleBounds.h>
#include <numbers>

namespace {

// Open CASCADE's optimal boxes are right to this much of a metre.
constexpr double Mm = 1e-3;
constexpr double Degree = std::numbers::pi / 180;

gp_Trsf Turned(const gp_Dir& axis, double angle, const gp_Vec& shift = {}) {
    gp_Trsf place;
    place.SetRotation(gp_Ax1(gp::Origin(), axis), angle);
    place.SetTranslationPart(shift);
    return place;
}

opencascade::handle<ViewShape> Model(const TopoDS_Shape& shape, const gp_Trsf& place) {
    opencascade::handle<ViewShape> model = new ViewShape(shape);
    model->SetLocalTransformation(place);
    return model;
}

struct Placed {
    const char* name;
    TopoDS_Shape shape;
    gp_Trsf place;
    gp_XYZ low, high;
};

class VisibleBounds : public testing::TestWithParam<Placed> {};

TEST_P(VisibleBounds, MatchTheGeometryAtItsPlacement) {
    const Placed& model = GetParam();
    const Bnd_Box box = ShapeHandle::GetFullVisibleAABB(Model(model.shape, model.place), false);
    ASSERT_FALSE(box.IsVoid());
    EXPECT_LE((box.CornerMin().XYZ() - model.low).Modulus(), Mm);
    EXPECT_LE((box.CornerMax().XYZ() - model.high).Modulus(), Mm);
}

const TopoDS_Shape Column = BRepPrimAPI_MakeCylinder(300, 1000).Shape();
const TopoDS_Shape Block = BRepPrimAPI_MakeBox(100, 200, 300).Shape();

gp_Trsf Doubled() {
    gp_Trsf scale;
    scale.SetScale(gp::Origin(), 2);
    return scale;
}

INSTANTIATE_TEST_SUITE_P(
    Models, VisibleBounds,
    testing::Values(
        Placed{"turned_column", Column, Turned(gp::DZ(), 45 * Degree), {-300, -300, 0}, {300, 300, 1000}},
        Placed{"tilted_column",
               Column,
               Turned(gp::DX(), 30 * Degree, {5, 0, 0}),
               {-295, -300 * std::cos(30 * Degree) - 500, -150},
               {305, 300 * std::cos(30 * Degree), 1000 * std::cos(30 * Degree) + 150}},
        Placed{"turned_block", Block, Turned(gp::DZ(), 90 * Degree), {-200, 0, 0}, {0, 100, 300}},
        Placed{"doubled_block", Block, Doubled(), {0, 0, 0}, {200, 400, 600}}),
    [](const auto& which) { return which.param.name; });

TEST(VisibleBoundsOfATree, IncludeChildrenOnRequest) {
    const auto parent = Model(Block, Turned(gp::DZ(), 0, {0, 0, 1000}));
    parent->AddChild(Model(Column, Turned(gp::DZ(), 45 * Degree)));
    EXPECT_NEAR(ShapeHandle::GetFullVisibleAABB(parent, false).CornerMax().Z(), 1300, Mm);
    const Bnd_Box both = ShapeHandle::GetFullVisibleAABB(parent, true);
    EXPECT_NEAR(both.CornerMax().Z(), 2000, Mm);
    EXPECT_NEAR(both.CornerMin().X(), -300, Mm);
    TopoDS_Compound empty;
    BRep_Builder().MakeCompound(empty);
    EXPECT_TRUE(ShapeHandle::GetFullVisibleAABB(Model(empty, Doubled()), true).IsVoid());
    EXPECT_TRUE(ShapeHandle::GetFullVisibleAABB({}, true).IsVoid());
    EXPECT_TRUE(ShapeHandle::GetFullVisibleAABB(Model({}, {}), true).IsVoid());
}

} // namespace
