#pragma once

#include <TopoDS_Shape.hxx>
#include <cell/ToolPath.h>
#include <cell/documents/JsonNode.h>

namespace cell {

/// Reads a motion of kind "tool_path" on a workpiece: its "poses", or the poses along an "edge" of its shape.
/// @param described the workpiece's own item, whose "edges" may give edges names. @throws InputError.
ToolPath ReadToolPath(const JsonNode& item, Workpiece& workpiece, const JsonNode& described);

/// Poses along an edge of the shape, evenly spaced, ends included. The tool points against the mean of the
/// normals of the faces that meet in the edge, so that it stands between them.
/// @param index of the edge in the shape, from 1; refused through the node where there is none.
std::vector<ToolPose> PosesAlongEdge(const TopoDS_Shape& shape, int index, double spacing,
                                     const JsonNode& node);

} // namespace cell
