#pragma once

#include <array>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>
#include <gp_Quaternion.hxx>
#include <gp_Trsf.hxx>
#include <host/view/ViewShape.h>
#include <mechanism/Export.h>
#include <mechanism/GrpState.h>
#include <utility>
#include <vector>

/// Dense sequences between key states, joint vectors (rad and mm, in the system's value order) and points
/// (mm). Stateless and reentrant; nothing is logged.
///
/// Common to all functions: input that is not finite gives output that is not finite, and no samples where it
/// determines their number; a step of zero is ignored. std::invalid_argument is thrown where the samples are
/// more than an int counts, where a state of a pair has no values or the second has fewer than the first, and
/// where vectors of steps or joints are too short; std::bad_alloc where memory cannot hold the result. The
/// caller's data are unchanged then. The caller
/// passes states of one system; this is checked only by their number of values.
namespace InterpHandle {

/// States from a to b in n equal parts, n being the number of whole steps on the axis that needs most, so a
/// part is between one and two steps long. Interior states carry the system and the values alone; the ends
/// are copies. Fewer than one whole step gives a and b.
/// @param steps largest wanted change of each value; a step of zero asks for nothing.
/// @throws std::string when there are interior states and a's system is not registered.
MECHANISM_EXPORT std::vector<GrpState> InterpolationPts(const GrpState& a, const GrpState& b,
                                                        const std::vector<double>& steps);
/// The same through a chain of key states, each of which occurs once. A single state gives nothing.
/// @throws std::out_of_range "invalid vector subscript" for an empty chain.
MECHANISM_EXPORT std::vector<GrpState> InterpolationPts(const std::vector<GrpState>& states,
                                                        const std::vector<double>& steps);
/// Evenly spaced points from a to b, d / step rounded parts. Only a when a and b are closer than 0.1 or the
/// step is below 0.001; only b when the step is more than twice the distance.
MECHANISM_EXPORT std::vector<gp_Pnt> InterpolationPts(const gp_Pnt& a, const gp_Pnt& b, const double& step);

/// The n + 1 vectors of n equal parts, and b once more: callers depend on the repeated end. n = 0 gives a
/// vector of NaN and b, a negative n gives b; nothing for empty vectors or different lengths.
MECHANISM_EXPORT std::vector<std::vector<double>> InterpolationPtsByNum(const std::vector<double>&& a,
                                                                        const std::vector<double>&& b, int n);
/// Exactly n evenly spaced points, a first and b last. n = 1 gives b, n below 1 gives a, and coincident ends
/// (1e-6) give a n times.
MECHANISM_EXPORT std::vector<gp_Pnt> InterpolationPtsByNum(const gp_Pnt& a, const gp_Pnt& b, const int& n);

/// States from a to b with as many between them as gaps (mm) fit into the whole millimetres between the two
/// tool centres. Between the ends values are blended linearly and the first robot's pose as a transform; all
/// else is a's.
/// @throws std::out_of_range "invalid vector subscript" when either state has no pose.
MECHANISM_EXPORT std::vector<GrpState> InterpolationPtsByPosGap(const GrpState& a, const GrpState& b,
                                                                double gap);

/// A copy of a with the values at fraction t of the way to b; t outside 0 .. 1 extrapolates.
MECHANISM_EXPORT GrpState InterpolationScalePts(const GrpState& a, const GrpState& b, double t);

/// Vectors from a to b, one |step| of the most changing value apart, the last part being the rest. b alone
/// when nothing changes; nothing for empty vectors, different lengths or a step below 0.001.
MECHANISM_EXPORT std::vector<std::vector<double>>
InterpolationPtsDescartes(const std::vector<double>& a, const std::vector<double>& b, double step);

/// Appends the polyline `in` to `out`, each part filled with vectors one step of the most changing value
/// apart. Values from the seventh on are external axes and count a thousandth of their change. Fewer than two
/// vectors append nothing; a step of zero fills nothing in.
MECHANISM_EXPORT void EquallyDisInterpolate(const std::vector<std::vector<double>>& in,
                                            std::vector<std::vector<double>>& out, double step);

// --- orientation -------------------------------------------------------------------------------------------
// Angle triples are gp_Intrinsic_XYZ in rad, held in points. They are blended as quaternions along the
// shorter arc: start + t * (end - start) of the unit quaternions, not normalised and not a slerp
// (gp_QuaternionNLerp).

/// n samples from a to b, both re-derived through quaternions. n = 1 gives a as it is, n below 1 nothing.
MECHANISM_EXPORT std::vector<gp_Pnt> EulerByQuaternion(const gp_Pnt& a, const gp_Pnt& b, const int& n);
/// One triple a path point, blended at its straight distance from the first point as a fraction of the last
/// one's; a point farther than the last extrapolates. Copies of a where first and last coincide (1e-6); a
/// alone for one point.
MECHANISM_EXPORT std::vector<gp_Pnt> EulerByQuaternion(const gp_Pnt& a, const gp_Pnt& b,
                                                       const std::vector<gp_Pnt>& pts);
/// The blend at t itself, of any norm; t is not clamped.
MECHANISM_EXPORT gp_Quaternion EulerScaleByQuaternion(const gp_Pnt& a, const gp_Pnt& b, double t);
/// Samples whose number follows from the direction of the change alone: its largest component as a unit
/// vector, over the step, rounded, at least 2. a alone for a change up to 0.001 or a step below 0.0001.
MECHANISM_EXPORT std::vector<gp_Pnt> InterpolationPtsByQuaternion(const gp_Pnt& a, const gp_Pnt& b,
                                                                  const double& step);
/// Copies of a whose first pose goes to b's in `num` (cut to a whole number) samples; values and everything
/// else stay a's.
/// @throws std::out_of_range "invalid vector subscript" when either state has no pose.
MECHANISM_EXPORT std::vector<GrpState> InterpolationPtsByQuaternion(const GrpState& a, const GrpState& b,
                                                                    double num);
/// Transforms from pose a to pose b; the positions, about `step` (mm) apart, decide how many.
MECHANISM_EXPORT std::vector<gp_Trsf> InterpolationPtsByQuaternion(const LocEuler& a, const LocEuler& b,
                                                                   double step);
/// Poses from a to b, as many as positions (step in mm) or angles (step as for angle triples) need, whichever
/// are more.
MECHANISM_EXPORT std::vector<LocEuler> InterpolationPtsByQuaternion(const LocEuler& a, const LocEuler& b,
                                                                    double posStep, double angStep);
/// The blend of two transforms at t: rotation as above, translation and scale linear; A and B themselves
/// within 1e-7 of the ends (gp_TrsfNLerp).
MECHANISM_EXPORT gp_Trsf InterpolationScaleTrsf(const gp_Trsf& A, const gp_Trsf& B, double t);

// --- tool paths --------------------------------------------------------------------------------------------
// A pose of a tool path is a point (mm) and the unit tool direction there; as an array x, y, z of the point,
// then of the direction, which need not be a unit vector then.

/// Point (mm) and unit tool direction.
using PathPose = std::pair<gp_Pnt, gp_Dir>;
/// x, y, z of the point (mm), then of the direction.
using ArrayPose = std::array<double, 6>;

/// Replaces every leg longer than `base` (mm; squares are compared, so its sign does not count) by samples of
/// a cubic, `base` apart along it. The tool of each sample is the leg's first one, turned about the bending
/// axis by the angle from the sample's tangent to the leg's first tangent: against the bend, by as much as
/// the curve has bent since. Up to one pose gives an empty path; two are blended on the straight line. The
/// last sample of a long leg is left out, on the last leg too: the path then ends before its final pose.
/// @throws Standard_Failure of the kernel for coincident neighbours on a long leg's tangents, a tool axis
///         that cannot be found, coordinates that are not finite; std::invalid_argument for a base that is
///         not a finite number above 0 where a leg is longer. The path stays as it was.
MECHANISM_EXPORT void SplineInterpolation(std::vector<std::pair<gp_Pnt, gp_Dir>>& path, double base);
/// The same on arrays, crowded poses dropped first, with a spacing of at least 1. An empty result leaves the
/// arrays as they were. @throws as ArrayToPathPair and SplineInterpolation.
MECHANISM_EXPORT void SplineInterpolationArry(std::vector<std::array<double, 6>>& arr, double base);
/// Poses of the arrays; a pose closer than 1 to the next one is dropped, the last is kept.
/// @throws std::out_of_range "invalid vector subscript" for an empty list; Standard_ConstructionError for a
///         zero direction.
MECHANISM_EXPORT std::vector<std::pair<gp_Pnt, gp_Dir>>
ArrayToPathPair(const std::vector<std::array<double, 6>>& arr);
/// First pose, every k-th between, last pose. A negative k keeps the ends alone; one pose comes back twice.
/// @throws std::invalid_argument for an empty path or k = 0.
MECHANISM_EXPORT std::vector<std::pair<gp_Pnt, gp_Dir>>
SparsePathPair(const std::vector<std::pair<gp_Pnt, gp_Dir>>& path, int k);
/// Takes out every pose whose point is farther than `tol` (mm) from the shape where it stands, and every path
/// that is empty then; groups stay. Distances are to the shape's triangles (ViewShapeCollision).
/// A tolerance that is no number takes out nothing.
/// @throws std::invalid_argument for a null shape or one without faces.
MECHANISM_EXPORT void CheckPathsOnFace(std::vector<std::vector<std::vector<std::array<double, 6>>>>& groups,
                                       const opencascade::handle<ViewShape>& face, double tol);

} // namespace InterpHandle
