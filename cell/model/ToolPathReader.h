#pragma once

#include <TopoDS_Shape.hxx>
#include <cell/ToolPath.h>
#include <cell/documents/JsonNode.h>

namespace cell {

/// Items that would give a path of more poses than this are taken for input errors.
inline constexpr double MostPoses = 1e6;

/// Reads a motion of kind "tool_path" on a workpiece: its "poses", or the poses along edges of its shape.
/// @param described the workpiece's own item, whose "edges" may give edges names. @throws InputError.
ToolPath ReadToolPath(const JsonNode& item, Workpiece& workpiece, const JsonNode& described);

/// Poses along the edges that an item names under "edge" or "edges", about "spacing_mm" apart, ends of edges
/// included. The tool points against the bisector of what is open beside the edge, or stands at the angle
/// from a face that "torch" asks for; round corners between edges it turns evenly.
std::vector<ToolPose> PosesAlongEdges(const TopoDS_Shape& shape, const JsonNode& item,
                                      const JsonNode& described);

/// Poses of strokes over a face: "face_near_mm", "direction" of the strokes, "spacing_mm" between them,
/// "step_mm" between poses, "lead_mm" over the edge of the face, "stand_off_mm" of the tool centre along the
/// face's normal. Every second stroke comes back.
std::vector<ToolPose> PosesOfStrokes(const TopoDS_Shape& shape, const JsonNode& node);

} // namespace cell
