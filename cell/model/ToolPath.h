#pragma once

#include <array>
#include <cell/documents/JsonNode.h>
#include <host/workpiece/Workpiece.h>
#include <string>
#include <vector>

namespace cell {

/// Point (mm) and direction of the tool, x y z each.
using ToolPose = std::array<double, 6>;

/// A path of the tool on a workpiece, and how it is to be worked up.
struct ToolPath {
    std::string name;
    Workpiece* workpiece;
    std::vector<ToolPose> poses; ///< in the workpiece's frame, directions of length 1
    double smooth;               ///< distance of the poses after smoothing, mm
    int keepEvery;               ///< which of them stay after thinning
    double tolerance;            ///< how far from the workpiece a pose may be, mm
    JsonNode node;
};

/// A path that was worked up, with how many poses each step left.
struct WorkedPath {
    std::vector<ToolPose> poses; ///< in the workpiece's frame, directions of length 1
    std::size_t converted = 0;
    std::size_t smoothed = 0;
    std::size_t added = 0; ///< ends of the path that smoothing left out
    std::size_t thinned = 0;
};

/// Reads a motion of kind "tool_path" on a workpiece: its "poses", or the poses along an "edge" of its shape.
/// @param described the workpiece's own item, whose "edges" may give edges names. @throws InputError.
ToolPath ReadToolPath(const JsonNode& item, Workpiece& workpiece, const JsonNode& described);

/// Smooths and thins the path, keeps both of its ends, and takes out what is not on the workpiece.
/// @throws InputError for a path that cannot be smoothed.
WorkedPath WorkUp(const ToolPath& path);

/// Poses of the workpiece's frame in the world, where the workpiece stands now.
std::vector<ToolPose> InWorld(const Workpiece& workpiece, const std::vector<ToolPose>& poses);

/// Poses along an edge of the shape, evenly spaced, ends included. The tool points against the mean of the
/// normals of the faces that meet in the edge, so that it stands between them.
/// @param index of the edge in the shape, from 1; refused through the node where there is none.
std::vector<ToolPose> PosesAlongEdge(const TopoDS_Shape& shape, int index, double spacing,
                                     const JsonNode& node);

} // namespace cell
