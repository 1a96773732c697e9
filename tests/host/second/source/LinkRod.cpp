#include <host/workpiece/LinkRod.h>

namespace {

gp_Trsf MotionOf(const LinkRod& link) {
    gp_Trsf motion;
    switch (link.jointType) {
    case JointX:
    case JointY:
    case JointZ:
        motion.SetRotation(gp_Ax1(gp_Pnt(), LinkRod::GetAxis(link.jointType)), link.value);
        break;
    case JointRotary:
        motion.SetRotation(link.axis, link.value);
        break;
    case JointLinear:
        motion.SetTranslation(link.value * gp_Vec(link.axis.Direction()));
        break;
    case JointFixed:
        break;
    }
    return motion;
}

} // namespace

void LinkRod::SetCenterTrsf(const gp_Trsf& trsf) { centerTrsf = trsf; }

bool LinkRod::IsInLimit(double jointValue, double margin) const {
    return limit.first + margin <= jointValue && jointValue <= limit.second - margin;
}

gp_Dir LinkRod::GetCenterAxis() const { return axis.Direction().Transformed(centerTrsf); }

gp_Dir LinkRod::GetAxis(JointType type) {
    return {type == JointY || type == JointZ ? 0.0 : 1.0, type == JointY ? 1.0 : 0.0,
            type == JointZ ? 1.0 : 0.0};
}

void LinkRod::PlaceOn(const Rigid& parentWorld) {
    const gp_Trsf X_WP = parentWorld.ToTrsf();
    worldTrsf = X_WP * centerTrsf * MotionOf(*this);
}
