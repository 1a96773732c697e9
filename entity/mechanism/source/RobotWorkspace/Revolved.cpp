#include "Checked.h"
#include "Failure.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepLib.hxx>
#include <BRepSweep_Revol.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopoDS_Vertex.hxx>
#include <TopoDS_Wire.hxx>
#include <algorithm>
#include <gp.hxx>
#include <gp_Ax1.hxx>
#include <iostream>
#include <mechanism/RobotWorkspace.h>
#include <numbers>

using namespace mechanism_detail;

namespace {

/// Squared length (mm^2) above which a step of the profile becomes an edge.
constexpr double ShortStep = 1.0;
constexpr double Turn = 2 * std::numbers::pi;

TopoDS_Wire ProfileWire(const std::vector<std::vector<double>>& profile) {
    std::vector<gp_Pnt> points;
    points.reserve(profile.size());
    for (const auto& entry : profile) {
        points.emplace_back(At(entry, 0), 0, At(entry, 1));
    }
    At(points, points.size() - 1) = points.front();
    // Neighbouring edges share a vertex; BRepBuilderAPI_MakeWire would otherwise search all edges for
    // coincident ones.
    std::vector<TopoDS_Vertex> corners;
    corners.reserve(points.size());
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        corners.push_back(BRepBuilderAPI_MakeVertex(points[i]).Vertex());
    }
    corners.push_back(At(corners, 0));
    BRepBuilderAPI_MakeWire wire;
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i - 1].SquareDistance(points[i]) > ShortStep) {
            wire.Add(BRepBuilderAPI_MakeEdge(corners[i - 1], corners[i]).Edge());
        }
    }
    return wire.Wire();
}

} // namespace

TopoDS_Shape RobotWorkspace::CreateRevol(const TopoDS_Shape& profile, const gp_Ax1& axis, double angle) {
    try {
        BRepLib::BuildCurves3d(profile);
        return BRepSweep_Revol(profile, axis, angle, Standard_False).Shape();
    } catch (...) {
        std::cout << "error at BRepSweep_Revol" << std::endl
                  << family::RobotWorkspace << '\t' << "RobotWorkspace::CreateRevol" << '\t' << __LINE__
                  << std::endl;
    }
    return {};
}

TopoDS_Shape RobotWorkspace::BuildRevolved(const WorkSpace::Robot& record) {
    if (WorkSpace::IsEuqal(robotData, record)) {
        return TopoDS::Compound(workspaceShape);
    }
    // The face inside the wire is revolved, so that the halves are solids and not shells.
    const TopoDS_Shape profile =
        BRepBuilderAPI_MakeFace(ProfileWire(WorkSpace::GetRobotWorkSpace(record)), Standard_True).Face();
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    for (const double limit : {record.jointMax[0], record.jointMin[0]}) {
        // The sweep reduces angles modulo a full turn, so more than one turn would leave only the remainder.
        const double angle = std::clamp(limit, -Turn, Turn);
        if (const TopoDS_Shape half = CreateRevol(profile, gp::OZ(), angle); !half.IsNull()) {
            builder.Add(compound, half);
        }
    }
    return compound;
}
