#pragma once

#include <cell/Cell.h>
#include <json/value.h>

namespace cell {

/// What `info` prints, for programs: lengths in mm, angles in degrees, frames in the world.
///
/// "mechanisms": each with "axes" (limits, direction and origin at zero), robots with "table" and "tools",
/// tools with their centre. "systems": where each entity's values lie in the flat vector ("slices"), and how
/// the vector follows from the independent values ("coupling"). Then "key_states", "motions", "tool_paths".
Json::Value CellToJson(const Cell& cell);

} // namespace cell
