// Orientation is blended through quaternions, along the shorter arc. Angle triples are intrinsic X-Y-Z, in
// rad, held in points; blending them number by number would take the tool through other orientations.
#include <cstdio>
#include <host/tools/gpHandle.h>
#include <mechanism/InterpHandle.h>
#include <numbers>

namespace {

constexpr double Deg = std::numbers::pi / 180;

void Print(const gp_Pnt& euler) {
    std::printf("  %7.2f %7.2f %7.2f deg\n", euler.X() / Deg, euler.Y() / Deg, euler.Z() / Deg);
}

} // namespace

int main() {
    const gp_Pnt from(150 * Deg, 0, 0);
    const gp_Pnt to(-170 * Deg, 0, 0); // forty degrees away, across the turn of the circle
    std::printf("five samples:\n");
    for (const gp_Pnt& euler : InterpHandle::EulerByQuaternion(from, to, 5)) {
        Print(euler);
    }

    // One triple a point of a path, by the distance from its start.
    const std::vector<gp_Pnt> points = {{0, 0, 0}, {25, 0, 0}, {100, 0, 0}};
    std::printf("along a path:\n");
    for (const gp_Pnt& euler :
         InterpHandle::EulerByQuaternion(gp_Pnt(0, 0, 0), gp_Pnt(0, 40 * Deg, 0), points)) {
        Print(euler);
    }

    // Whole transforms: rotation as above, translation linear.
    const gp_Trsf a = gpHandle::EulerToTrsf(LocEuler(gp_Pnt(0, 0, 0), gp_Pnt(0, 0, 0)));
    const gp_Trsf b = gpHandle::EulerToTrsf(LocEuler(gp_Pnt(100, 0, 0), gp_Pnt(0, 0, 90 * Deg)));
    const LocEuler half = gpHandle::TrsfToEuler(InterpHandle::InterpolationScaleTrsf(a, b, 0.5));
    std::printf("half way: x %.1f mm, about Z %.2f deg\n", half.location.X(), half.euler.Z() / Deg);
}
