#include <mechanism/InterpHandle.h>

#include "Count.h"

#include <GCPnts_UniformAbscissa.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Standard_ConstructionError.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

// Dense tool paths. Each long leg becomes a cubic of its own, so the work is linear in the length of the
// path; short legs stay as they are.

namespace {

using InterpHandle::PathPose;
using Path = std::vector<PathPose>;

constexpr double FitTolerance = 0.001;
constexpr double AutomaticTolerance = -1.0;
/// Below this angle (rad) tool and path are parallel and define no bending axis.
constexpr double AlongPath = 0.17453292519943295;

/// A leg that is longer than the spacing, with the chords that give its tangents at both ends.
struct Leg {
    const PathPose& from;
    const PathPose& to;
    gp_Vec startTangent;
    gp_Vec endTangent;
};

// The tangents of a leg are its own chord at the start and the next leg's chord at the end; for the last leg
// they are the previous chord and its own.
Leg LegAt(const Path& path, std::size_t i) {
    const bool last = i + 2 == path.size();
    const std::size_t first = last ? i - 1 : i;
    return {path[i], path[i + 1], gp_Vec(path[first].first, path[first + 1].first),
            gp_Vec(path[first + 1].first, path[first + 2].first)};
}

bool PointsAlong(const gp_Dir& tool, const gp_Dir& tangent) {
    const double angle = tool.Angle(tangent);
    return angle <= AlongPath || angle >= std::numbers::pi - AlongPath;
}

// The bending axis, about which the tool turns: perpendicular to tool and path at whichever end defines it.
gp_XYZ BendingAxis(const Leg& leg) {
    const gp_Dir start(leg.startTangent);
    const gp_Dir end(leg.endTangent);
    if (PointsAlong(leg.from.second, start)) {
        return leg.to.second.Crossed(end).XYZ();
    }
    if (PointsAlong(leg.to.second, end)) {
        return leg.from.second.Crossed(start).XYZ();
    }
    return leg.from.second.Crossed(start).XYZ() + leg.to.second.Crossed(end).XYZ();
}

opencascade::handle<Geom_BSplineCurve> Fit(const Leg& leg) {
    const opencascade::handle<TColgp_HArray1OfPnt> points = new TColgp_HArray1OfPnt(1, 2);
    points->SetValue(1, leg.from.first);
    points->SetValue(2, leg.to.first);
    GeomAPI_Interpolate fit(points, Standard_False, FitTolerance);
    fit.Load(leg.startTangent, leg.endTangent, Standard_True);
    fit.Perform();
    return fit.IsDone() ? fit.Curve() : opencascade::handle<Geom_BSplineCurve>();
}

// The angle is measured from the sample's tangent to the start's, so the tool turns against the bend.
// Programs depend on that order of the arguments.
gp_Dir Turned(const gp_Dir& tool, const gp_Pnt& point, const gp_Vec& tangent, const gp_Dir& start,
              const gp_Dir& axis) {
    const double angle = gp_Dir(tangent).AngleWithRef(start, axis);
    return tool.Rotated(gp_Ax1(point, axis), angle);
}

// All samples of the leg except the last, which is the first of the next leg.
void AppendLeg(const Leg& leg, double base, Path& out) {
    const gp_Dir axis(BendingAxis(leg));
    const gp_Dir start(leg.startTangent);
    const auto fitted = Fit(leg);
    if (fitted.IsNull()) {
        return;
    }
    const GeomAdaptor_Curve curve(fitted);
    const GCPnts_UniformAbscissa samples(curve, base, curve.FirstParameter(), curve.LastParameter(),
                                         AutomaticTolerance);
    for (int k = 1; k < samples.NbPoints(); ++k) {
        gp_Pnt point;
        gp_Vec tangent;
        curve.D1(samples.Parameter(k), point, tangent);
        out.emplace_back(point,
                         k == 1 ? leg.from.second : Turned(leg.from.second, point, tangent, start, axis));
    }
}

Path BlendTwo(const Path& path, double base) {
    const auto points = InterpHandle::InterpolationPts(path[0].first, path[1].first, base);
    if (points.size() == 2) {
        return path;
    }
    Path out{path[0]};
    if (points.size() == 1) {
        return out;
    }
    const gp_XYZ first = path[0].second.XYZ();
    const gp_XYZ step = (path[1].second.XYZ() - first) / static_cast<double>(points.size() - 1);
    out.reserve(points.size());
    for (std::size_t k = 1; k + 1 < points.size(); ++k) {
        out.emplace_back(points[k], gp_Dir(first + step * static_cast<double>(k)));
    }
    out.push_back(path[1]);
    return out;
}

// Squares are compared: a negative spacing acts as its absolute value, and an infinite one divides nothing.
bool IsShort(const Path& path, std::size_t leg, double base) {
    return path[leg].first.SquareDistance(path[leg + 1].first) <= base * base;
}

Path Densified(const Path& path, double base) {
    Path out;
    out.reserve(path.size());
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        if (IsShort(path, i, base)) {
            out.push_back(path[i]);
            if (i + 2 == path.size()) {
                out.push_back(path[i + 1]);
            }
        } else {
            AppendLeg(LegAt(path, i), base, out);
        }
    }
    return out;
}

bool IsFinite(const gp_Pnt& point) { return std::isfinite(point.X() + point.Y() + point.Z()); }

void RequireFinite(const Path& path, std::size_t from, std::size_t to) {
    for (std::size_t i = from; i <= to; ++i) {
        if (!IsFinite(path[i].first)) {
            throw Standard_ConstructionError(("pose " + std::to_string(i) + " has no finite point").c_str());
        }
    }
}

// Only legs that are divided need valid points and a finite spacing; the kernel would divide them without end
// otherwise. A cubic is not much longer than its chord.
void RequireDivisible(const Path& path, double base) {
    double samples = 0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        if (IsShort(path, i, base)) {
            continue;
        }
        if (!std::isfinite(base) || base <= 0) {
            throw std::invalid_argument(mechanism_detail::format(
                "SplineInterpolation: base {}, expected a finite spacing above 0 mm", base));
        }
        const std::size_t first = i + 2 == path.size() ? i - 1 : i;
        RequireFinite(path, first, first + 2);
        samples +=
            mechanism_detail::Count(path[i].first.Distance(path[i + 1].first) / base, "SplineInterpolation");
    }
    mechanism_detail::RequireMemory(samples, sizeof(PathPose));
}

} // namespace

void InterpHandle::SplineInterpolation(std::vector<std::pair<gp_Pnt, gp_Dir>>& path, double base) {
    if (path.size() <= 1) {
        path.clear();
        return;
    }
    if (path.size() == 2) {
        RequireFinite(path, 0, 1);
        path = BlendTwo(path, base);
        return;
    }
    RequireDivisible(path, base);
    path = Densified(path, base);
}
