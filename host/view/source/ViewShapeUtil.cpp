#include <host/view/ViewShapeUtil.h>

#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <array>
#include <gp_Ax2.hxx>
#include <stdexcept>
#include <string>

namespace {

// Proportions of an arrow, as parts of its length.
constexpr double ShaftRadius = 0.03;
constexpr double ShaftLength = 0.75;
constexpr double HeadRadius = 0.08;
constexpr double BallRadius = 0.06;

TopoDS_Shape Arrow(const gp_Pnt& origin, const gp_Dir& direction, double length) {
    const gp_Ax2 shaft(origin, direction);
    const gp_Ax2 head(origin.Translated(gp_Vec(direction) * (ShaftLength * length)), direction);
    TopoDS_Compound arrow;
    BRep_Builder builder;
    builder.MakeCompound(arrow);
    builder.Add(arrow, BRepPrimAPI_MakeCylinder(shaft, ShaftRadius * length, ShaftLength * length).Shape());
    builder.Add(arrow,
                BRepPrimAPI_MakeCone(head, HeadRadius * length, 0, (1 - ShaftLength) * length).Shape());
    return arrow;
}

} // namespace

opencascade::handle<BaseViewShape> ViewShapeUtil::GenDirModel(const gp_Ax2& frame, int size) {
    if (size < 1) {
        throw std::invalid_argument("ViewShapeUtil::GenDirModel: size " + std::to_string(size) +
                                    ", expected at least 1 mm");
    }
    const gp_Pnt& origin = frame.Location();
    const std::array<TopoDS_Shape, 3> arrows = {Arrow(origin, frame.XDirection(), size),
                                                Arrow(origin, frame.YDirection(), size),
                                                Arrow(origin, frame.Direction(), size)};
    const std::array<Quantity_NameOfColor, 3> colours = {Quantity_NOC_RED, Quantity_NOC_GREEN,
                                                         Quantity_NOC_BLUE1};
    TopoDS_Compound triad;
    BRep_Builder builder;
    builder.MakeCompound(triad);
    builder.Add(triad, BRepPrimAPI_MakeSphere(origin, BallRadius * size).Shape());
    for (const TopoDS_Shape& arrow : arrows) {
        builder.Add(triad, arrow);
    }
    opencascade::handle<BaseViewShape> model = new BaseViewShape(triad);
    for (std::size_t axis = 0; axis < arrows.size(); ++axis) {
        model->SetCustomColor(arrows[axis], Quantity_Color(colours[axis]));
    }
    return model;
}
