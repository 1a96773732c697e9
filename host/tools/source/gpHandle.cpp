#include <host/tools/gpHandle.h>

#include <Bnd_OBB.hxx>
#include <cmath>
#include <gp.hxx>
#include <gp_Ax1.hxx>
#include <gp_Ax2.hxx>
#include <gp_Mat.hxx>
#include <gp_Quaternion.hxx>
#include <gp_Trsf.hxx>
#include <gp_Vec.hxx>
#include <host/tools/Rigid.h>
#include <limits>

namespace {

/// Cosine of the second angle below which the first one is rounding error, after a few products of unit
/// rotations.
constexpr double GimbalLock = 16 * std::numeric_limits<double>::epsilon();

gp_Quaternion EulerToQua(const gp_Pnt& euler) {
    gp_Quaternion rotation;
    rotation.SetEulerAngles(gp_Intrinsic_XYZ, euler.X(), euler.Y(), euler.Z());
    return rotation;
}

} // namespace

LocEuler gpHandle::TrsfToEuler(const gp_Trsf& trsf) {
    return {gp_Pnt(trsf.TranslationPart()), QuaToEuler(trsf.GetRotation())};
}

gp_Trsf gpHandle::EulerToTrsf(const LocEuler& pose) {
    gp_Trsf trsf;
    trsf.SetTransformation(EulerToQua(pose.euler), gp_Vec(pose.location.XYZ()));
    return trsf;
}

gp_Trsf gpHandle::LocEulerToTrsf(LocEuler pose) { return EulerToTrsf(pose); }

gp_Trsf gpHandle::EulerToRotateTrsf(const gp_Pnt& euler) {
    gp_Trsf trsf;
    trsf.SetRotation(EulerToQua(euler));
    return trsf;
}

gp_Pnt gpHandle::QuaToEuler(const gp_Quaternion& rotation) {
    // With the second angle near pi/2 the first and third are ill-conditioned one by one. The third is
    // computed from the rotation left after removing the first, so that their errors cancel;
    // gp_Quaternion::GetEulerAngles computes them separately and is off by a tenth of a radian there. At pi/2
    // itself the first is zero.
    const gp_Mat m = rotation.GetMatrix();
    const double cosY = std::hypot(m(1, 1), m(1, 2));
    const double x = cosY > GimbalLock ? std::atan2(-m(2, 3), m(3, 3)) : 0;
    const double sinX = std::sin(x);
    const double cosX = std::cos(x);
    return {x, std::atan2(m(1, 3), cosY),
            std::atan2(cosX * m(2, 1) + sinX * m(3, 1), cosX * m(2, 2) + sinX * m(3, 2))};
}

gp_Trsf gpHandle::AxisRotateToTrsf(const gp_Vec& axis, double angle) {
    gp_Trsf trsf;
    trsf.SetRotation(gp_Ax1(gp::Origin(), gp_Dir(axis)), angle);
    return trsf;
}

gp_Ax2 gpHandle::TrsfToAx2(const gp_Trsf& trsf) { return gp::XOY().Transformed(trsf); }

gp_Trsf gpHandle::Ax1ToTrsf(const gp_Ax1& axis) {
    const gp_Ax2 frame(axis.Location(), axis.Direction());
    const gp_Dir& x = frame.XDirection();
    const gp_Dir& y = frame.YDirection();
    const gp_Dir& z = frame.Direction();
    const gp_Pnt& origin = frame.Location();
    return Rigid{{x.X(), y.X(), z.X(), x.Y(), y.Y(), z.Y(), x.Z(), y.Z(), z.Z()},
                 {origin.X(), origin.Y(), origin.Z()}}
        .ToTrsf();
}

bool gpHandle::IsSameTrsf(const gp_Trsf& a, const gp_Trsf& b, double tolerance) {
    for (int row = 1; row <= 3; ++row) {
        for (int col = 1; col <= 4; ++col) {
            if (!(std::abs(a.Value(row, col) - b.Value(row, col)) <= tolerance)) {
                return false;
            }
        }
    }
    return true;
}

bool gpHandle::sameTrsf(const gp_Trsf& a, const gp_Trsf& b, double tolerance) {
    return IsSameTrsf(a, b, tolerance);
}

std::vector<std::pair<double, gp_Dir>> gpHandle::GetOBBlengthAndDir(const Bnd_OBB& box) {
    if (box.IsVoid()) {
        return {};
    }
    return {{2 * box.XHSize(), gp_Dir(box.XDirection())},
            {2 * box.YHSize(), gp_Dir(box.YDirection())},
            {2 * box.ZHSize(), gp_Dir(box.ZDirection())}};
}

void TrsfToDoubleArray(const gp_Trsf& trsf, double* translation, double* rotation) {
    for (int row = 0; row < 3; ++row) {
        translation[row] = trsf.Value(row + 1, 4);
        for (int col = 0; col < 3; ++col) {
            rotation[3 * row + col] = trsf.Value(row + 1, col + 1);
        }
    }
}
