#pragma once

#include <mechanism/ContextState.h>
#include <mechanism/Export.h>
#include <vector>

/// Operations on sequences of states; none writes log records.
namespace GrpStateUtils {

/// Thins a path: drops points equal to their predecessor, replaces A, B, A by A, and ends with an exact copy
/// of the last point. One pass; only points that are kept are copied.
///
/// A state is compared by its values alone (mm, rad) with the last and the last but one that are kept. One
/// state gives two copies of it, no state gives none.
/// @param tolerance largest difference of values that are the same; a NaN matches no value.
MECHANISM_EXPORT std::vector<GrpState> RemoveDuplicatedStates(const std::vector<GrpState>& states,
                                                              double tolerance);
/// The same for several systems at once; compares as ContextState::IsEqual does, whatever the tolerance.
/// @throws std::out_of_range "invalid map<K, T> key" when a context holds a system that a kept one lacks.
MECHANISM_EXPORT std::vector<ContextState> RemoveDuplicatedStates(const std::vector<ContextState>& states,
                                                                  double tolerance);

/// Sorts candidates by the Euclidean distance of their first `count` values to the reference's, nearest
/// first; those at equal distance keep their order, those at a NaN distance come last. A `count` past the
/// reference's values, or below 1, changes nothing.
/// @throws std::invalid_argument, with nothing changed, for a candidate with fewer values.
MECHANISM_EXPORT void SortRobotStateJ(const GrpState& reference, std::vector<GrpState>& states, int count);

} // namespace GrpStateUtils
