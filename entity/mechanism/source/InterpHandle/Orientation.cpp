#include <mechanism/InterpHandle.h>

#include "Count.h"

#include <algorithm>
#include <cmath>
#include <gp_QuaternionNLerp.hxx>
#include <gp_TrsfNLerp.hxx>
#include <host/tools/gpHandle.h>

namespace {

constexpr double SamePosition = 1e-6;
constexpr double SmallestTurn = 0.001;
constexpr double SmallestAngleStep = 0.0001;

gp_Quaternion ToQuaternion(const gp_Pnt& angles) {
    gp_Quaternion rotation;
    rotation.SetEulerAngles(gp_Intrinsic_XYZ, angles.X(), angles.Y(), angles.Z());
    return rotation;
}

/// Blend of two angle triples; the quaternions are computed once for all samples.
class AngleBlend {
public:
    AngleBlend(const gp_Pnt& a, const gp_Pnt& b) : blend(ToQuaternion(a), ToQuaternion(b)) {}

    gp_Quaternion At(double t) const {
        gp_Quaternion rotation;
        blend.Interpolate(t, rotation);
        return rotation;
    }
    gp_Pnt AnglesAt(double t) const { return gpHandle::QuaToEuler(At(t)); }

private:
    gp_QuaternionNLerp blend;
};

} // namespace

std::vector<gp_Pnt> InterpHandle::EulerByQuaternion(const gp_Pnt& a, const gp_Pnt& b, const int& n) {
    if (n < 2) {
        return n == 1 ? std::vector<gp_Pnt>{a} : std::vector<gp_Pnt>();
    }
    const AngleBlend blend(a, b);
    std::vector<gp_Pnt> angles;
    angles.reserve(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
        angles.push_back(blend.AnglesAt(static_cast<double>(k) / (n - 1)));
    }
    return angles;
}

std::vector<gp_Pnt> InterpHandle::EulerByQuaternion(const gp_Pnt& a, const gp_Pnt& b,
                                                    const std::vector<gp_Pnt>& pts) {
    if (pts.size() < 2) {
        return std::vector<gp_Pnt>(pts.size(), a);
    }
    const double length = pts.front().Distance(pts.back());
    if (length < SamePosition) {
        return std::vector<gp_Pnt>(pts.size(), a);
    }
    const AngleBlend blend(a, b);
    std::vector<gp_Pnt> angles;
    angles.reserve(pts.size());
    for (const gp_Pnt& point : pts) {
        angles.push_back(blend.AnglesAt(point.Distance(pts.front()) / length));
    }
    return angles;
}

gp_Quaternion InterpHandle::EulerScaleByQuaternion(const gp_Pnt& a, const gp_Pnt& b, double t) {
    return AngleBlend(a, b).At(t);
}

std::vector<gp_Pnt> InterpHandle::InterpolationPtsByQuaternion(const gp_Pnt& a, const gp_Pnt& b,
                                                               const double& step) {
    const gp_XYZ change = b.XYZ() - a.XYZ();
    const double size = change.Modulus();
    if (!(size > SmallestTurn && step >= SmallestAngleStep)) {
        return {a};
    }
    const gp_XYZ unit = change / size;
    const double largest = std::max({std::abs(unit.X()), std::abs(unit.Y()), std::abs(unit.Z())});
    const int n = mechanism_detail::Count(std::round(largest / step), "InterpolationPtsByQuaternion");
    return EulerByQuaternion(a, b, std::max(n, 2));
}

std::vector<GrpState> InterpHandle::InterpolationPtsByQuaternion(const GrpState& a, const GrpState& b,
                                                                 double num) {
    const LocEuler& from = a.GetLocEuler(0);
    const LocEuler& to = b.GetLocEuler(0);
    const auto angles =
        EulerByQuaternion(from.euler, to.euler, mechanism_detail::Count(num, "InterpolationPtsByQuaternion"));
    if (angles.empty()) {
        return {};
    }
    const auto points = InterpolationPtsByNum(from.location, to.location, static_cast<int>(angles.size()));
    const std::size_t count = std::min(points.size(), angles.size());
    std::vector<GrpState> states;
    states.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        states.emplace_back(a).SetLocEuler(0, LocEuler(points[i], angles[i]));
    }
    return states;
}

std::vector<gp_Trsf> InterpHandle::InterpolationPtsByQuaternion(const LocEuler& a, const LocEuler& b,
                                                                double step) {
    const auto points = InterpolationPts(a.location, b.location, step);
    const auto angles = EulerByQuaternion(a.euler, b.euler, static_cast<int>(points.size()));
    const std::size_t count = std::min(points.size(), angles.size());
    std::vector<gp_Trsf> poses;
    poses.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        poses.push_back(gpHandle::EulerToTrsf(LocEuler(points[i], angles[i])));
    }
    return poses;
}

std::vector<LocEuler> InterpHandle::InterpolationPtsByQuaternion(const LocEuler& a, const LocEuler& b,
                                                                 double posStep, double angStep) {
    auto points = InterpolationPts(a.location, b.location, posStep);
    auto angles = InterpolationPtsByQuaternion(a.euler, b.euler, angStep);
    if (points.size() > angles.size()) {
        angles = EulerByQuaternion(a.euler, b.euler, static_cast<int>(points.size()));
    } else if (points.size() < angles.size()) {
        points = InterpolationPtsByNum(a.location, b.location, static_cast<int>(angles.size()));
    }
    const std::size_t count = std::min(points.size(), angles.size());
    std::vector<LocEuler> poses;
    poses.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        poses.emplace_back(points[i], angles[i]);
    }
    return poses;
}

gp_Trsf InterpHandle::InterpolationScaleTrsf(const gp_Trsf& A, const gp_Trsf& B, double t) {
    gp_Trsf blended;
    gp_TrsfNLerp(A, B).Interpolate(t, blended);
    return blended;
}
