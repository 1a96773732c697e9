#include "Harness.h"

#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_UniformAbscissa.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <GeomAdaptor_Curve.hxx>
#include <Geom_BSplineCurve.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <cmath>
#include <fcl/fcl.h>
#include <host/view/TriangleModel.h>
#include <host/workpiece/ShapeEntity.h>
#include <mechanism/InterpHandle.h>
#include <memory>
#include <numbers>
#include <random>

namespace {

using bench::Row;
using bench::Work;
using InterpHandle::ArrayPose;
using InterpHandle::PathPose;

// --- smoothing
// -----------------------------------------------------------------------------------------------

std::vector<PathPose> Winding(int legs) {
    std::vector<PathPose> path;
    for (int i = 0; i <= legs; ++i) {
        path.emplace_back(gp_Pnt(10.0 * i, 15 * std::sin(0.4 * i), 4 * std::cos(0.3 * i)),
                          gp_Dir(0.1, 0.2, -1));
    }
    return path;
}

// The fit and the samples of every leg, and nothing else.
std::size_t KernelAlone(const std::vector<PathPose>& path, double base) {
    std::size_t samples = 0;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        const std::size_t first = i + 2 == path.size() ? i - 1 : i;
        const opencascade::handle<TColgp_HArray1OfPnt> ends = new TColgp_HArray1OfPnt(1, 2);
        ends->SetValue(1, path[i].first);
        ends->SetValue(2, path[i + 1].first);
        GeomAPI_Interpolate fit(ends, Standard_False, 0.001);
        fit.Load(gp_Vec(path[first].first, path[first + 1].first),
                 gp_Vec(path[first + 1].first, path[first + 2].first), Standard_True);
        fit.Perform();
        const GeomAdaptor_Curve curve(fit.Curve());
        const GCPnts_UniformAbscissa even(curve, base, -1.0);
        for (int k = 1; k < even.NbPoints(); ++k, ++samples) {
            gp_Pnt point;
            gp_Vec tangent;
            curve.D1(even.Parameter(k), point, tangent);
            bench::Keep(point.X() + tangent.X());
        }
    }
    return samples;
}

Work Spline(int legs) {
    constexpr double base = 4;
    auto path = std::make_shared<std::vector<PathPose>>(Winding(legs));
    auto counts = std::make_shared<std::vector<std::size_t>>(2);
    return {
        {[path, counts] {
             auto dense = *path;
             InterpHandle::SplineInterpolation(dense, base);
             (*counts)[0] = dense.size();
         },
         static_cast<double>(legs)},
        {[path, counts] { (*counts)[1] = KernelAlone(*path, base); }, static_cast<double>(legs)},
        [counts] { return (*counts)[0] == (*counts)[1] ? std::string() : "different numbers of samples"; }};
}

Work SplineGrowth(bool quick) {
    const Work large = Spline(quick ? 1000 : 100000);
    const Work small = Spline(quick ? 100 : 1000);
    return {large.ours, small.ours, [] { return std::string(); }};
}

// --- distance to a face
// ----------------------------------------------------------------------------------------

constexpr double Radius = 500;
constexpr double Tolerance = 5;
constexpr double Spacing = 1;
/// Between turns: 1e5 poses go from one pole to the other.
constexpr double Pitch = 28;

/// A sphere of about 100 000 triangles, and a path about it, half of its poses within the tolerance.
struct Scene {
    TopoDS_Shape sphere = BRepPrimAPI_MakeSphere(Radius).Shape();
    opencascade::handle<ShapeEntity> face;
    std::vector<ArrayPose> poses;
    std::vector<double> ours;
    std::vector<double> peer;

    Scene(int count, bool quick) {
        BRepMesh_IncrementalMesh(sphere, quick ? 2.0 : 1.0, Standard_False, quick ? 0.1 : 0.0148);
        face = new ShapeEntity(sphere, Uuid::CreateUuid());
        // The model takes the triangulation that is there as long as it is finer than it asks for.
        for (TopExp_Explorer faces(sphere, TopAbs_FACE); faces.More(); faces.Next()) {
            TopLoc_Location location;
            BRep_Tool::Triangulation(TopoDS::Face(faces.Current()), location)->Deflection(1e-3);
        }
        face->GetBVHMdl(); // built before the clock runs
        // A tool path: a pose every millimetre along turns about the sphere, now nearer to it and now
        // farther.
        std::mt19937 random(3);
        std::uniform_real_distribution<double> height(-2 * Tolerance, 2 * Tolerance);
        double polar = 0.3;
        double azimuth = 0;
        for (int i = 0; i < count; ++i) {
            const gp_Dir d(std::sin(polar) * std::cos(azimuth), std::sin(polar) * std::sin(azimuth),
                           std::cos(polar));
            const gp_XYZ p = d.XYZ() * (Radius + height(random));
            poses.push_back({p.X(), p.Y(), p.Z(), d.X(), d.Y(), d.Z()});
            const double turn = Spacing / (Radius * std::sin(polar));
            azimuth += turn;
            polar += turn * Pitch / (2 * std::numbers::pi * Radius);
        }
    }
};

void RunOurs(Scene& scene) {
    std::vector<std::vector<std::vector<ArrayPose>>> groups = {{scene.poses}};
    InterpHandle::CheckPathsOnFace(groups, scene.face, Tolerance);
    scene.ours = {static_cast<double>(groups[0][0].size())};
}

std::string SameCount(const Scene& scene, double part) {
    // Points within the deflection of the tolerance may fall on either side.
    const double room = 2 + part * static_cast<double>(scene.poses.size());
    return bench::Difference(scene.ours, scene.peer, room);
}

Work AgainstExact(bool quick) {
    auto scene = std::make_shared<Scene>(quick ? 10 : 40, quick);
    const auto runPeer = [scene] {
        double kept = 0;
        for (const ArrayPose& pose : scene->poses) {
            const auto point = BRepBuilderAPI_MakeVertex(gp_Pnt(pose[0], pose[1], pose[2])).Shape();
            const BRepExtrema_DistShapeShape distance(point,
                                                      TopExp_Explorer(scene->sphere, TopAbs_SHELL).Current());
            kept += distance.Value() <= Tolerance ? 1 : 0;
        }
        scene->peer = {kept};
    };
    const auto count = static_cast<double>(scene->poses.size());
    return {
        {[scene] { RunOurs(*scene); }, count}, {runPeer, count}, [scene] { return SameCount(*scene, 0.02); }};
}

using Mesh = fcl::BVHModel<fcl::OBBRSSd>;

std::shared_ptr<Mesh> FclMesh(const Scene& scene) {
    std::vector<fcl::Vector3d> points;
    std::vector<fcl::Triangle> triangles;
    const auto& tree = scene.face->GetBVHMdl()->GetTree();
    for (int i = 0; i < tree.Size(); ++i) {
        const auto& t = tree.Element(i);
        const std::size_t first = points.size();
        for (const auto& corner : {t.a, t.b, t.c}) {
            points.emplace_back(corner.x(), corner.y(), corner.z());
        }
        triangles.emplace_back(first, first + 1, first + 2);
    }
    auto mesh = std::make_shared<Mesh>();
    mesh->beginModel();
    mesh->addSubModel(points, triangles);
    mesh->endModel();
    return mesh;
}

Work AgainstFcl(bool quick) {
    static constexpr double ball = 1e-3;
    auto scene = std::make_shared<Scene>(quick ? 50 : 1000, quick);
    auto mesh = FclMesh(*scene);
    const auto runPeer = [scene, mesh] {
        const fcl::CollisionObjectd surface(mesh);
        fcl::CollisionObjectd probe(std::make_shared<fcl::Sphered>(ball));
        double kept = 0;
        for (const ArrayPose& pose : scene->poses) {
            probe.setTranslation(fcl::Vector3d(pose[0], pose[1], pose[2]));
            fcl::DistanceResultd result;
            kept +=
                fcl::distance(&surface, &probe, fcl::DistanceRequestd(), result) + ball <= Tolerance ? 1 : 0;
        }
        scene->peer = {kept};
    };
    const auto count = static_cast<double>(scene->poses.size());
    return {{[scene] { RunOurs(*scene); }, count}, {runPeer, count}, [scene] {
                return SameCount(*scene, 0.001);
            }};
}

Work FaceGrowth(bool quick) {
    auto large = std::make_shared<Scene>(quick ? 1000 : 100000, quick);
    auto small = std::make_shared<Scene>(quick ? 100 : 1000, quick);
    return {{[large] { RunOurs(*large); }, static_cast<double>(large->poses.size())},
            {[small] { RunOurs(*small); }, static_cast<double>(small->poses.size())},
            [] { return std::string(); }};
}

} // namespace

std::vector<Row> bench::PathRows() {
    return {
        {"spline_path", "the bare kernel calls", 1.1, [](bool quick) { return Spline(quick ? 100 : 10000); }},
        {"spline_path_growth", "itself at 1e3 legs, ours at 1e5", 1.5, SplineGrowth},
        {"path_on_face_exact", "BRepExtrema_DistShapeShape", 0.02, AgainstExact},
        {"path_on_face_fcl", "FCL, small sphere to mesh", 0.2, AgainstFcl},
        {"path_on_face_growth", "itself at 1e3 poses, ours at 1e5", 1.5, FaceGrowth}};
}
