#pragma once

#include <array>
#include <cell/Export.h>
#include <host/workpiece/Workpiece.h>
#include <memory>
#include <string>
#include <vector>

namespace cell {

class JsonNode;

/// Point (mm) and direction of the tool, x y z each.
using ToolPose = std::array<double, 6>;

/// A path of the tool on a workpiece, and how it is to be worked up.
struct ToolPath {
    std::string name;
    Workpiece* workpiece;
    std::vector<ToolPose> poses;          ///< in the workpiece's frame, directions of length 1
    double smooth;                        ///< distance of the poses after smoothing, mm
    int keepEvery;                        ///< which of them stay after thinning
    double tolerance;                     ///< how far from the workpiece a pose may be, mm
    std::shared_ptr<const JsonNode> node; ///< where the file speaks of it
};

/// A path that was worked up, with how many poses each step left.
struct WorkedPath {
    std::vector<ToolPose> poses; ///< in the workpiece's frame, directions of length 1
    std::size_t converted = 0;
    std::size_t smoothed = 0;
    std::size_t added = 0; ///< ends of the path that smoothing left out
    std::size_t thinned = 0;
};

/// Smooths and thins the path, keeps both of its ends, and takes out what is not on the workpiece.
/// @throws InputError for a path that cannot be smoothed.
CELL_EXPORT WorkedPath WorkUp(const ToolPath& path);

/// Poses of the workpiece's frame in the world, where the workpiece stands now.
CELL_EXPORT std::vector<ToolPose> InWorld(const Workpiece& workpiece, const std::vector<ToolPose>& poses);

} // namespace cell
