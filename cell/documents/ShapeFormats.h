#pragma once

#include <TopoDS_Shape.hxx>
#include <filesystem>

namespace cell {

/// Whether shapes are read from files that end like this one: .step, .stp, .brep, .stl, in any case.
bool IsReadableShapeName(const std::filesystem::path& file);

/// Reads a shape file in this process, which a broken file may crash or stop; lengths in mm.
/// @throws InputError, Standard_Failure and standard exceptions, depending on how the file is broken.
TopoDS_Shape ReadShapeUnguarded(const std::filesystem::path& file);

} // namespace cell
