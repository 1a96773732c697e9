#pragma once

#include <TopoDS_Shape.hxx>
#include <cell/JsonNode.h>

namespace cell {

/// The shape in the STEP, BRep or STL file that a text of a cell file names, relative to the cell file;
/// lengths come out in mm.
/// @throws InputError for a file that cannot be read, or has no faces.
TopoDS_Shape ReadShape(const JsonNode& name);

} // namespace cell
