#pragma once

#include <TopoDS_Shape.hxx>
#include <filesystem>

namespace cell {

/// Whether shapes can be written under this name: it ends in .step, .stp, .brep or .stl.
bool IsShapeName(const std::filesystem::path& file);

/// Writes the shape, lengths in mm, in the format of the name's extension; STL gets its triangles, no farther
/// than half a millimetre from it.
/// @throws InputError naming the file where it cannot be written.
void WriteShape(const TopoDS_Shape& shape, const std::filesystem::path& file);

} // namespace cell
