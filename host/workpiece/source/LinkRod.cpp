#include <host/workpiece/LinkRod.h>

#include <cmath>
#include <gp_Quaternion.hxx>

namespace {

// Turns the frame about its own axis number `axis` (0 X, 1 Y, 2 Z): only two columns change.
void TurnAbout(int axis, double angle, Rigid& frame) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const int u = (axis + 1) % 3;
    const int v = (axis + 2) % 3;
    for (int row = 0; row < 9; row += 3) {
        const double ru = frame.r[row + u];
        const double rv = frame.r[row + v];
        frame.r[row + u] = c * ru + s * rv;
        frame.r[row + v] = c * rv - s * ru;
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

LinkRod* LinkRod::GetSubLink(int index) const {
    return index >= 0 && index < SubLinkSize() ? children[static_cast<std::size_t>(index)] : nullptr;
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
    world = parentWorld * center;
    switch (jointType) {
    case JointX:
    case JointY:
    case JointZ:
        TurnAbout(jointType - JointX, value, world);
        break;
    case JointRotary:
    case JointLinear:
        world = world * Rigid::From(MotionAlong(axis, jointType, value));
        break;
    case JointFixed:
        break;
    }
    world.StoreTo(worldTrsf);
}
