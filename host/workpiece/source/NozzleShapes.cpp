#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepCheck_Analyzer.hxx>
#include <BRepOffsetAPI_MakePipe.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <GeomLProp_CLProps.hxx>
#include <Geom_BezierCurve.hxx>
#include <Standard_Failure.hxx>
#include <TColgp_Array1OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Solid.hxx>
#include <algorithm>
#include <gp_Ax2.hxx>
#include <gp_Circ.hxx>
#include <host/tools/NozzleParam.h>
#include <host/tools/gpHandle.h>

// A welding torch from its numbers: here and not in host/tools, which knows no solid modelling of its own.
// The body stands on the mounting frame; the nozzle points along the tool centre's Z and ends where tip and
// wire leave room for it; the neck is a pipe along the curve between them.

namespace {

// How much of the distance between body and nozzle the neck runs straight on at either end.
constexpr double NeckHandle = 0.45;
// The pipe needs room on the inside of the bend, or its surface folds.
constexpr double SmallestBend = 1.1;
constexpr int BendSamples = 64;
// The tip narrows towards the wire, and the gas nozzle towards the tip.
constexpr double TipTaper = 0.6;
constexpr double NozzleTaper = 0.8;
constexpr double SmallestSize = 1e-3; // mm

struct Frame {
    gp_Pnt bodyEnd;
    gp_Pnt nozzleStart;
    gp_Pnt nozzleEnd;
    gp_Dir forward;
};

Frame FrameOf(const NozzleParam& nozzle, const LocEuler& tcp) {
    const gp_Dir forward = gp::DZ().Transformed(gpHandle::EulerToTrsf(tcp));
    const gp_Vec back(forward.Reversed());
    const gp_Pnt nozzleEnd = tcp.location.Translated(back * (nozzle.stickOut + nozzle.tipLength));
    return {gp_Pnt(0, 0, nozzle.bodyLength), nozzleEnd.Translated(back * nozzle.nozzleLength), nozzleEnd,
            forward};
}

opencascade::handle<Geom_BezierCurve> NeckCurve(const Frame& frame) {
    const double handle = NeckHandle * frame.bodyEnd.Distance(frame.nozzleStart);
    TColgp_Array1OfPnt poles(1, 4);
    poles(1) = frame.bodyEnd;
    poles(2) = frame.bodyEnd.Translated(gp_Vec(gp::DZ()) * handle);
    poles(3) = frame.nozzleStart.Translated(gp_Vec(frame.forward.Reversed()) * handle);
    poles(4) = frame.nozzleStart;
    return new Geom_BezierCurve(poles);
}

bool BendsGently(const opencascade::handle<Geom_BezierCurve>& curve, double radius) {
    GeomLProp_CLProps properties(curve, 2, 1e-9);
    for (int i = 0; i <= BendSamples; ++i) {
        properties.SetParameter(static_cast<double>(i) / BendSamples);
        if (properties.Curvature() * radius * SmallestBend > 1) {
            return false;
        }
    }
    return true;
}

TopoDS_Shape Neck(const opencascade::handle<Geom_BezierCurve>& curve, double radius) {
    const TopoDS_Wire spine = BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(curve).Edge()).Wire();
    const gp_Circ circle(gp_Ax2(curve->StartPoint(), gp::DZ()), radius);
    const TopoDS_Wire profile = BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire();
    return BRepOffsetAPI_MakePipe(spine, BRepBuilderAPI_MakeFace(profile).Face()).Shape();
}

TopoDS_Shape Tapered(const gp_Pnt& start, const gp_Dir& along, double radius, double taper, double length) {
    return BRepPrimAPI_MakeCone(gp_Ax2(start, along), radius, taper * radius, length).Shape();
}

bool IsValidSolid(const TopoDS_Shape& shape) {
    TopExp_Explorer solids(shape, TopAbs_SOLID);
    return solids.More() && BRepCheck_Analyzer(shape).IsValid();
}

/// Solids that vanish in the kernel's tolerance keep its checker walking round their wires for ever.
bool HasSubstance(const NozzleParam& nozzle) {
    return std::min({nozzle.tipRadius, nozzle.tipLength, nozzle.nozzleRadius, nozzle.nozzleLength,
                     nozzle.neckRadius, nozzle.bodyRadius, nozzle.bodyLength}) >= SmallestSize;
}

bool HasRoomForNeck(const NozzleParam& nozzle, const Frame& frame) {
    const gp_Vec across(frame.bodyEnd, frame.nozzleStart);
    // The neck must leave the body forwards and enter the nozzle from behind.
    return nozzle.tipRadius < nozzle.nozzleRadius && nozzle.neckRadius <= nozzle.bodyRadius &&
           across.Magnitude() > nozzle.neckRadius && across.Dot(gp_Vec(gp::DZ())) > 0 &&
           across.Dot(gp_Vec(frame.forward)) > 0;
}

} // namespace

std::pair<bool, std::vector<TopoDS_Shape>> NozzleParam::LoadTcpLocEuler(const NozzleParam& nozzle,
                                                                        const LocEuler& tcp) {
    try {
        const Frame frame = FrameOf(nozzle, tcp);
        if (!HasSubstance(nozzle) || !HasRoomForNeck(nozzle, frame)) {
            return {false, {}};
        }
        const auto curve = NeckCurve(frame);
        if (!BendsGently(curve, nozzle.neckRadius)) {
            return {false, {}};
        }
        const gp_Ax2 guard(frame.nozzleStart, frame.forward);
        std::vector<TopoDS_Shape> shapes = {
            Tapered(frame.nozzleEnd, frame.forward, nozzle.tipRadius, TipTaper, nozzle.tipLength),
            Tapered(frame.nozzleStart, frame.forward, nozzle.nozzleRadius, NozzleTaper, nozzle.nozzleLength),
            Neck(curve, nozzle.neckRadius),
            BRepPrimAPI_MakeCylinder(guard, nozzle.nozzleRadius + nozzle.guardClearance, nozzle.nozzleLength)
                .Shape(),
            BRepPrimAPI_MakeCylinder(nozzle.bodyRadius, nozzle.bodyLength).Shape()};
        if (!std::all_of(shapes.begin(), shapes.end(), IsValidSolid)) {
            return {false, {}};
        }
        return {true, std::move(shapes)};
    } catch (const Standard_Failure&) {
        // The kernel refuses what is no solid: zero or negative sizes, degenerate frames.
        return {false, {}};
    }
}
