#pragma once

#include <cell/documents/JsonNode.h>
#include <cell/model/Systems.h>
#include <mechanism/GrpState.h>
#include <vector>

namespace cell {

/// Gives the states of a leg the joint values that put the tool centre where their poses are, without a jump
/// and from the first state's values on; external axes keep theirs.
/// @param leg at even parts of the straight line from the first pose to the last, both of key states.
/// @throws InputError at the item where the line cannot be followed: where, and why.
void SolveLeg(const JsonNode& item, const System& system, std::vector<GrpState>& leg);

/// States on the straight line between the tool centres of two key states, at most `spacing` (mm) apart and
/// no more than 5 degrees turned, orientation blended as the library does; their values are those of
/// SolveLeg.
std::vector<GrpState> FillLine(const JsonNode& item, const System& system, const GrpState& from,
                               const GrpState& to, double spacing);

} // namespace cell
