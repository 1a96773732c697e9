#pragma once

#include <gp_Pnt.hxx>
#include <json/forwards.h>

/// A pose: position plus three Euler angles.
///
/// The angles are those of gp_Intrinsic_XYZ, in radians, held in a point; the position is in millimetres.
/// Both default to zero.
struct LocEuler {
    gp_Pnt location; ///< x, y, z in mm
    gp_Pnt euler;    ///< the three angles in rad

    /// The zero pose.
    LocEuler() = default;
    /// @param location_ mm. @param euler_ rad.
    LocEuler(const gp_Pnt& location_, const gp_Pnt& euler_) : location(location_), euler(euler_) {}
};

/// Equal when none of the six numbers differs by more than 1e-7 (mm, rad). Angles are compared as
/// numbers: two triples that name one rotation differently are not equal.
bool operator==(const LocEuler& a, const LocEuler& b);

/// The pose as a JSON array: x, y, z in mm, then the three angles in rad, unrounded.
/// @param count how many of the six numbers to write: 6, or 3 for the position alone.
/// @throws std::invalid_argument for any other count.
Json::Value LocEulerToJson(const LocEuler& pose, int count);

/// Reads what LocEulerToJson writes; missing numbers are zero, so null gives the zero pose.
/// @throws Json::Exception when the value is neither null nor an array, or an element is not a number.
LocEuler LocEulerFromJson(const Json::Value& json);
