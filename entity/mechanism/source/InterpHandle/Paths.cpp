#include <mechanism/InterpHandle.h>

#include "Checked.h"

#include <BRepLib_MakeVertex.hxx>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <host/view/ViewShapeCollision.h>
#include <host/workpiece/ShapeEntity.h>
#include <stdexcept>

namespace {

/// Poses closer than this (mm) to the next one are dropped.
constexpr double Crowded = 1.0;
/// Least spacing (mm) when a path of arrays is divided.
constexpr double FinestSpacing = 1.0;
/// Mode of the query that returns the least distance rather than any within the tolerance.
constexpr int NearestDistance = 2;

using InterpHandle::ArrayPose;
using InterpHandle::PathPose;

gp_Pnt PointOf(const ArrayPose& pose) { return {pose[0], pose[1], pose[2]}; }

PathPose ToPose(const ArrayPose& pose) { return {PointOf(pose), gp_Dir(pose[3], pose[4], pose[5])}; }

ArrayPose ToArray(const PathPose& pose) {
    const auto& [p, d] = pose;
    return {p.X(), p.Y(), p.Z(), d.X(), d.Y(), d.Z()};
}

} // namespace

std::vector<std::pair<gp_Pnt, gp_Dir>>
InterpHandle::ArrayToPathPair(const std::vector<std::array<double, 6>>& arr) {
    mechanism_detail::At(arr, 0);
    std::vector<PathPose> path;
    path.reserve(arr.size());
    for (std::size_t i = 0; i + 1 < arr.size(); ++i) {
        if (PointOf(arr[i]).SquareDistance(PointOf(arr[i + 1])) >= Crowded * Crowded) {
            path.push_back(ToPose(arr[i]));
        }
    }
    path.push_back(ToPose(arr.back()));
    return path;
}

void InterpHandle::SplineInterpolationArry(std::vector<std::array<double, 6>>& arr, double base) {
    std::vector<PathPose> path = ArrayToPathPair(arr);
    SplineInterpolation(path, std::max(base, FinestSpacing));
    if (!path.empty()) {
        std::vector<ArrayPose> dense(path.size());
        std::transform(path.begin(), path.end(), dense.begin(), ToArray);
        arr = std::move(dense);
    }
}

std::vector<std::pair<gp_Pnt, gp_Dir>>
InterpHandle::SparsePathPair(const std::vector<std::pair<gp_Pnt, gp_Dir>>& path, int k) {
    if (path.empty() || k == 0) {
        throw std::invalid_argument(path.empty()
                                        ? "SparsePathPair: an empty path, expected at least one pose"
                                        : "SparsePathPair: k 0, expected every first or further pose");
    }
    // A negative k becomes a huge divisor, which no inner index reaches.
    const auto stride = static_cast<std::uint64_t>(static_cast<std::int64_t>(k));
    std::vector<PathPose> kept{path.front()};
    const std::uint64_t last = path.size() - 1;
    for (std::uint64_t i = stride; i < last; i += stride) {
        kept.push_back(path[i]);
    }
    kept.push_back(path.back());
    return kept;
}

void InterpHandle::CheckPathsOnFace(std::vector<std::vector<std::vector<std::array<double, 6>>>>& groups,
                                    const opencascade::handle<ViewShape>& face, double tol) {
    const opencascade::handle<ShapeEntity> probe = new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid());
    probe->CreateBVHMdl(BRepLib_MakeVertex(gp_Pnt()).Shape(), false);
    gp_Trsf place;
    const auto isFar = [&](const ArrayPose& pose) {
        place.SetTranslationPart(gp_Vec(pose[0], pose[1], pose[2]));
        probe->SetTransformation(place, true);
        return ViewShapeCollision::CalcPQPToleranceNereastPnt(probe, face, tol, NearestDistance).distance >
               tol;
    };
    for (auto& group : groups) {
        for (auto& path : group) {
            std::erase_if(path, isFar);
        }
        std::erase_if(group, [](const auto& path) { return path.empty(); });
    }
}
