#include <Standard_Failure.hxx>
#include <cell/documents/Frames.h>
#include <cell/model/ToolPathReader.h>
#include <mechanism/InterpHandle.h>

namespace cell {

namespace {

constexpr int MostSkipped = 1000000;
/// Poses nearer to each other than this (mm) count as equal.
constexpr double SamePlace = 1e-6;

ToolPose ReadPose(const JsonNode& node) {
    const std::vector<double> n = node.Numbers();
    if (n.size() != 6) {
        node.Refuse("six numbers: a point (mm) and a direction");
    }
    const Vec direction{n[3], n[4], n[5]};
    if (!(Length(direction) > 0)) {
        node.Refuse("a direction that is not zero");
    }
    const Vec unit = Unit(direction);
    return {n[0], n[1], n[2], unit[0], unit[1], unit[2]};
}

/// The shape that edges are counted in.
const TopoDS_Shape& ShapeOf(const Workpiece& workpiece) {
    return workpiece.GetFixMdlMap().begin()->second->Shape();
}

std::vector<ToolPose> ReadPoses(const JsonNode& item, const Workpiece& workpiece, const JsonNode& described) {
    const auto list = item.Find("poses");
    if (const auto strokes = item.Find("strokes")) {
        return PosesOfStrokes(ShapeOf(workpiece), *strokes);
    }
    const auto edge = item.Find(item.Find("edges") ? "edges" : "edge");
    if (list.has_value() == edge.has_value()) {
        item.Refuse(list ? "both poses and edge" : "neither poses nor edge", "either poses or an edge");
    }
    if (edge) {
        return PosesAlongEdges(ShapeOf(workpiece), item, described);
    }
    std::vector<ToolPose> poses;
    for (const JsonNode& pose : list->Items("poses")) {
        poses.push_back(ReadPose(pose));
    }
    if (poses.size() < 2) {
        list->Refuse(std::to_string(poses.size()) + " poses", "at least two");
    }
    return poses;
}

double Apart(const ToolPose& a, const ToolPose& b) { return Length({b[0] - a[0], b[1] - a[1], b[2] - a[2]}); }

double LengthOf(const std::vector<ToolPose>& poses) {
    double length = 0;
    for (std::size_t i = 1; i < poses.size(); ++i) {
        length += Apart(poses[i - 1], poses[i]);
    }
    return length;
}

/// The spline ends before the final pose where its last leg is long, and crowded poses are dropped from the
/// start: a closed path would stay open. @return how many ends were missing.
std::size_t AddEnds(const ToolPose& first, const ToolPose& last, std::vector<ToolPose>& poses) {
    const std::size_t before = poses.size();
    if (Apart(poses.front(), first) > SamePlace) {
        poses.insert(poses.begin(), first);
    }
    if (Apart(poses.back(), last) > SamePlace) {
        poses.push_back(last);
    }
    return poses.size() - before;
}

std::vector<ToolPose> Thinned(const std::vector<ToolPose>& poses, int keepEvery) {
    std::vector<InterpHandle::PathPose> path;
    path.reserve(poses.size());
    for (const auto& [x, y, z, dx, dy, dz] : poses) {
        path.emplace_back(gp_Pnt(x, y, z), gp_Dir(dx, dy, dz));
    }
    std::vector<ToolPose> thinned;
    for (const auto& [p, d] : InterpHandle::SparsePathPair(path, keepEvery)) {
        thinned.push_back({p.X(), p.Y(), p.Z(), d.X(), d.Y(), d.Z()});
    }
    return thinned;
}

/// A group a pose tells which of them stay: distances are asked in the world, where the model stands.
std::vector<ToolPose> OnWorkpiece(const ToolPath& path, const std::vector<ToolPose>& poses) {
    std::vector<std::vector<std::vector<ToolPose>>> groups;
    groups.reserve(poses.size());
    for (const ToolPose& pose : InWorld(*path.workpiece, poses)) {
        groups.push_back({{pose}});
    }
    InterpHandle::CheckPathsOnFace(groups, path.workpiece->GetFixMdlMap().begin()->second, path.tolerance);
    std::vector<ToolPose> kept;
    for (std::size_t i = 0; i < poses.size(); ++i) {
        if (!groups[i].empty()) {
            kept.push_back(poses[i]);
        }
    }
    return kept;
}

} // namespace

ToolPath ReadToolPath(const JsonNode& item, Workpiece& workpiece, const JsonNode& described) {
    item.OnlyKeys({"name", "kind", "workpiece", "poses", "edge", "edges", "reversed", "start_mm", "trim_mm",
                   "strokes", "torch", "spacing_mm", "smooth_mm", "keep_every", "tolerance_mm"});
    ToolPath path{item.At("name").Text(),
                  &workpiece,
                  ReadPoses(item, workpiece, described),
                  item.At("smooth_mm").Length(),
                  item.At("keep_every").Whole(1, MostSkipped),
                  item.At("tolerance_mm").Length(),
                  std::make_shared<const JsonNode>(item)};
    if (LengthOf(path.poses) / path.smooth > MostPoses) {
        item.At("smooth_mm").Refuse("a distance that gives at most 1000000 poses");
    }
    return path;
}

WorkedPath WorkUp(const ToolPath& path) {
    WorkedPath worked;
    std::vector<ToolPose> poses = path.poses;
    worked.converted = poses.size();
    try {
        InterpHandle::SplineInterpolationArry(poses, path.smooth);
    } catch (const Standard_Failure&) {
        path.node->Refuse("these poses",
                          "poses apart from each other, through which a smooth curve can be laid");
    }
    worked.smoothed = poses.size();
    worked.added = AddEnds(path.poses.front(), path.poses.back(), poses);
    const std::vector<ToolPose> thinned = Thinned(poses, path.keepEvery);
    worked.thinned = thinned.size();
    worked.poses = OnWorkpiece(path, thinned);
    return worked;
}

std::vector<ToolPose> InWorld(const Workpiece& workpiece, const std::vector<ToolPose>& poses) {
    const Rigid world = Rigid::From(workpiece.GetRootMdlTrsf());
    std::vector<ToolPose> placed;
    placed.reserve(poses.size());
    for (const ToolPose& pose : poses) {
        const Vec p = Apply(world, {pose[0], pose[1], pose[2]});
        const Vec d = Rotate(world, {pose[3], pose[4], pose[5]});
        placed.push_back({p[0], p[1], p[2], d[0], d[1], d[2]});
    }
    return placed;
}

} // namespace cell
