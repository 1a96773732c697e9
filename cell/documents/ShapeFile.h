#pragma once

#include <TopoDS_Shape.hxx>
#include <cell/documents/JsonNode.h>
#include <chrono>

namespace cell {

/// The shape in the STEP, BRep or STL file that a text of a cell file names, relative to the cell file;
/// lengths come out in mm. It is read, measured and meshed in a child process first, since broken files crash
/// the kernel or keep it busy for ever.
/// @throws InputError for a file that cannot be read in time, or has no faces.
TopoDS_Shape ReadShape(const JsonNode& name);
TopoDS_Shape ReadShape(const std::filesystem::path& file);

/// How long the reading of one shape file may take.
void SetShapeTimeLimit(std::chrono::milliseconds limit);

} // namespace cell
