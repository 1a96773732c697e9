#include <mechanism/InterpHandle.h>

#include "Count.h"

#include <algorithm>
#include <cmath>
#include <gp_Dir.hxx>

namespace {

constexpr double ShortestSegment = 0.1;
constexpr double SmallestStep = 0.001;
constexpr double CoincidentPoints = 1e-6;

gp_Dir DirectionFrom(const gp_Pnt& a, const gp_Pnt& b) { return gp_Dir(b.XYZ() - a.XYZ()); }

} // namespace

std::vector<gp_Pnt> InterpHandle::InterpolationPts(const gp_Pnt& a, const gp_Pnt& b, const double& step) {
    const double distance = a.Distance(b);
    if (distance < ShortestSegment || step < SmallestStep) {
        return {a};
    }
    const int parts = mechanism_detail::Count(std::round(distance / step), "InterpolationPts");
    const double spacing = distance / parts;
    const gp_Dir direction = DirectionFrom(a, b);
    std::vector<gp_Pnt> points;
    points.reserve(static_cast<std::size_t>(parts) + 1);
    for (int k = 0; k < parts; ++k) {
        points.emplace_back(a.XYZ() + direction.XYZ() * (spacing * k));
    }
    points.push_back(b);
    return points;
}

std::vector<gp_Pnt> InterpHandle::InterpolationPtsByNum(const gp_Pnt& a, const gp_Pnt& b, const int& n) {
    if (n < 1) {
        return {a};
    }
    const double distance = a.Distance(b);
    if (distance < CoincidentPoints) {
        return std::vector<gp_Pnt>(static_cast<std::size_t>(n), a);
    }
    const gp_XYZ stride = DirectionFrom(a, b).XYZ() * (distance / (n - 1));
    std::vector<gp_Pnt> points;
    points.reserve(static_cast<std::size_t>(n));
    for (int k = 0; k + 1 < n; ++k) {
        points.emplace_back(stride * k + a.XYZ());
    }
    points.push_back(b);
    return points;
}
