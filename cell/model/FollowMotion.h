#pragma once

#include <cell/Motion.h>
#include <cell/ToolPath.h>
#include <cell/documents/JsonNode.h>

namespace cell {

/// Reads a motion of kind "follow": arm, carrier and the bench with the workpiece follow tool paths together,
/// from the first key state through all but the last of them to the first path, and to the last one after
/// all.
/// @param paths the tool paths that stand before it in the file. @throws InputError.
Interpolation ReadFollow(const JsonNode& item, const std::vector<KeyState>& keys, const System& system,
                         const std::vector<ToolPath>& paths);

} // namespace cell
