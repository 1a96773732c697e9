#include <host/workpiece/LinkRod.h>

#include <cmath>
#include <gp_Quaternion.hxx>

namespace {

// parent * center * turn about the frame's own axis number Axis (0 X, 1 Y, 2 Z), in one pass over the rows:
// of the turned product only two columns differ from the product itself.
template <int Axis>
void PlaceTurned(const Rigid& parent, const Rigid& center, double angle, Rigid& out) {
    constexpr int u = (Axis + 1) % 3;
    constexpr int v = (Axis + 2) % 3;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    for (int row = 0; row < 3; ++row) {
        const double x = parent.r[3 * row];
        const double y = parent.r[3 * row + 1];
        const double z = parent.r[3 * row + 2];
        const auto column = [&](int col) {
            return x * center.r[col] + y * center.r[3 + col] + z * center.r[6 + col];
        };
        const double cu = column(u);
        const double cv = column(v);
        out.r[3 * row + Axis] = column(Axis);
        out.r[3 * row + u] = c * cu + s * cv;
        out.r[3 * row + v] = c * cv - s * cu;
        out.p[row] = x * center.p[0] + y * center.p[1] + z * center.p[2] + parent.p[row];
    }
}

gp_Trsf MotionAlong(const gp_Ax1& axis, JointType type, double value) {
    gp_Trsf motion;
    if (type == JointRotary) {
        motion.SetRotation(axis, value);
    } else {
        motion.SetTranslation(gp_Vec(axis.Direction()) * value);
    }
    return motion;
}

} // namespace

void LinkRod::SetCenterTrsf(const gp_Trsf& trsf) {
    centerTrsf = trsf;
    center = Rigid::From(trsf);
}

bool LinkRod::IsInLimit(double jointValue, double margin) const {
    return jointValue >= limit.first + margin && jointValue <= limit.second - margin;
}

gp_Dir LinkRod::GetCenterAxis() const { return axis.Direction().Transformed(centerTrsf); }

gp_Dir LinkRod::GetAxis(JointType type) {
    switch (type) {
    case JointY:
        return gp_Dir(0, 1, 0);
    case JointZ:
        return gp_Dir(0, 0, 1);
    default:
        return gp_Dir(1, 0, 0);
    }
}

void LinkRod::PlaceOn(const Rigid& parentWorld) {
    switch (jointType) {
    case JointX:
        PlaceTurned<0>(parentWorld, center, value, world);
        break;
    case JointY:
        PlaceTurned<1>(parentWorld, center, value, world);
        break;
    case JointZ:
        PlaceTurned<2>(parentWorld, center, value, world);
        break;
    case JointRotary:
    case JointLinear:
        world = parentWorld * center * Rigid::From(MotionAlong(axis, jointType, value));
        break;
    case JointFixed:
        world = parentWorld * center;
        break;
    }
    world.StoreTo(worldTrsf);
}
