// A seam on a pipe: coarse poses are smoothed, thinned, and checked against the surface they should lie on.
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <cmath>
#include <cstdio>
#include <host/view/ViewShape.h>
#include <mechanism/InterpHandle.h>
#include <numbers>

int main() {
    constexpr double Radius = 100; // mm
    std::vector<InterpHandle::PathPose> seam;
    for (int i = 0; i <= 6; ++i) { // a quarter turn around the pipe; the tool looks inward
        const double angle = i * std::numbers::pi / 12;
        const gp_Pnt point(Radius * std::cos(angle), Radius * std::sin(angle), 50);
        seam.emplace_back(point, gp_Dir(-std::cos(angle), -std::sin(angle), 0));
    }
    std::printf("taught: %zu poses\n", seam.size());

    InterpHandle::SplineInterpolation(seam, /*mm*/ 2);
    std::printf("smoothed: %zu poses, %.2f mm apart\n", seam.size(), seam[0].first.Distance(seam[1].first));

    seam = InterpHandle::SparsePathPair(seam, 3);
    std::printf("every third: %zu poses\n", seam.size());

    std::vector<InterpHandle::ArrayPose> path;
    for (const auto& [point, direction] : seam) {
        path.push_back({point.X(), point.Y(), point.Z(), direction.X(), direction.Y(), direction.Z()});
    }
    path.push_back({0, 0, 50, 0, 0, 1}); // in the middle of the pipe: nothing to weld there
    const opencascade::handle<ViewShape> pipe = new ViewShape(BRepPrimAPI_MakeCylinder(Radius, 100).Shape());
    std::vector<std::vector<std::vector<InterpHandle::ArrayPose>>> groups = {{path}};
    InterpHandle::CheckPathsOnFace(groups, pipe, /*mm*/ 0.5);
    std::printf("on the surface: %zu of %zu poses\n", groups[0][0].size(), path.size());
}
