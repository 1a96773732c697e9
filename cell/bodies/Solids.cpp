#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <algorithm>
#include <cell/bodies/Solids.h>
#include <cmath>

namespace cell {

namespace {

/// Width of a bevel, as part of the radius.
constexpr double Bevel = 0.09;
/// Radii closer than this (mm) make a cylinder: a cone needs two different ones.
constexpr double SameRadius = 1e-3;

} // namespace

gp_Pnt Point(const Triple& t) { return {t[0], t[1], t[2]}; }
gp_Dir Direction(const Triple& t) { return {t[0], t[1], t[2]}; }

TopoDS_Shape Drum(const gp_Pnt& centre, const gp_Dir& axis, double radius, double halfLength) {
    const gp_Ax2 frame(centre, axis);
    const double bevel = std::min(Bevel * radius, 0.5 * halfLength);
    const auto at = [&](double r, double h) {
        return centre.Translated(gp_Vec(frame.XDirection()) * r + gp_Vec(axis) * h);
    };
    BRepBuilderAPI_MakePolygon profile;
    profile.Add(at(0, -halfLength));
    profile.Add(at(radius - bevel, -halfLength));
    profile.Add(at(radius, bevel - halfLength));
    profile.Add(at(radius, halfLength - bevel));
    profile.Add(at(radius - bevel, halfLength));
    profile.Add(at(0, halfLength));
    profile.Close();
    return BRepPrimAPI_MakeRevol(BRepBuilderAPI_MakeFace(profile.Wire()).Shape(), frame.Axis()).Shape();
}

TopoDS_Shape Tube(const gp_Pnt& a, const gp_Pnt& b, double radiusA, double radiusB) {
    const gp_Ax2 frame(a, gp_Dir(gp_Vec(a, b)));
    const double length = a.Distance(b);
    if (std::abs(radiusA - radiusB) < SameRadius) {
        return BRepPrimAPI_MakeCylinder(frame, radiusA, length).Shape();
    }
    return BRepPrimAPI_MakeCone(frame, radiusA, radiusB, length).Shape();
}

TopoDS_Shape Block(const gp_Ax2& frame, const gp_XYZ& low, const gp_XYZ& high) {
    const gp_Vec corner = gp_Vec(frame.XDirection()) * low.X() + gp_Vec(frame.YDirection()) * low.Y() +
                          gp_Vec(frame.Direction()) * low.Z();
    const gp_XYZ size = high - low;
    return BRepPrimAPI_MakeBox(frame.Translated(corner), size.X(), size.Y(), size.Z()).Shape();
}

TopoDS_Shape Ball(const gp_Pnt& centre, double radius) {
    return BRepPrimAPI_MakeSphere(centre, radius).Shape();
}

Assembly::Assembly() { BRep_Builder().MakeCompound(compound); }

void Assembly::Add(const TopoDS_Shape& shape) {
    BRep_Builder().Add(compound, shape);
    ++count;
}

} // namespace cell
