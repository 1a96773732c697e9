#pragma once

#include <gp_Pnt.hxx>
#include <mechanism/Export.h>
#include <mechanism/GrpState.h>
#include <vector>

/// Dense sequences between key states, joint vectors (rad and mm, in the system's value order) and points
/// (mm). Stateless and reentrant; nothing is logged. Inputs are not validated: paired states are of one
/// system, step vectors are as long as the values.
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

/// The n + 1 vectors of n equal parts, and b once more: callers count on the doubled end. n = 0 gives a
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

} // namespace InterpHandle
