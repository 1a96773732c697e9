#pragma once

#include <gp_Pnt.hxx>
#include <host/tools/LocEuler.h>
#include <utility>
#include <vector>

class Bnd_OBB;
class gp_Ax1;
class gp_Ax2;
class gp_Dir;
class gp_Quaternion;
class gp_Trsf;
class gp_Vec;

/// Conversions between transforms and poses. Euler angles are gp_Intrinsic_XYZ in radians everywhere,
/// lengths millimetres.
namespace gpHandle {

/// Position and angles of a rigid transform; undone by EulerToTrsf to rounding, gimbal lock included. The
/// angles are the principal ones, the first being zero in gimbal lock.
LocEuler TrsfToEuler(const gp_Trsf& trsf);
/// The rigid transform of a pose; undoes TrsfToEuler.
gp_Trsf EulerToTrsf(const LocEuler& pose);
/// The same as EulerToTrsf.
gp_Trsf LocEulerToTrsf(LocEuler pose);
/// The rotation of three angles (rad), without translation.
gp_Trsf EulerToRotateTrsf(const gp_Pnt& euler);
/// The three angles of a quaternion (any non-zero norm).
gp_Pnt QuaToEuler(const gp_Quaternion& rotation);
/// Rotation by an angle (rad) about an axis through the origin.
/// @throws Standard_ConstructionError for a zero axis.
gp_Trsf AxisRotateToTrsf(const gp_Vec& axis, double angle);

/// The frame that a transform moves the world frame to: its origin, Z as main and X as second direction.
gp_Ax2 TrsfToAx2(const gp_Trsf& trsf);
/// A frame with its origin on the axis' location and Z along it; X as gp_Ax2 chooses it from Z.
gp_Trsf Ax1ToTrsf(const gp_Ax1& axis);

/// Whether no entry of the two 3 x 4 matrices (scale included) differs by more than the tolerance.
bool IsSameTrsf(const gp_Trsf& a, const gp_Trsf& b, double tolerance);
/// The same as IsSameTrsf.
bool sameTrsf(const gp_Trsf& a, const gp_Trsf& b, double tolerance);

/// The three edges of an oriented box: full length (mm) and unit direction, in the box's X, Y, Z order.
/// A void box gives an empty list.
std::vector<std::pair<double, gp_Dir>> GetOBBlengthAndDir(const Bnd_OBB& box);

} // namespace gpHandle

/// Flattens a rigid transform.
/// @param translation 3 numbers, mm. @param rotation 9 numbers, row by row.
void TrsfToDoubleArray(const gp_Trsf& trsf, double* translation, double* rotation);
