#pragma once

#include <cell/Cell.h>
#include <filesystem>

namespace cell {

/// A state of one of the cell's systems, from its own document or the last one of a trace.
/// @throws InputError.
GrpState LoadState(const std::filesystem::path& file, const Cell& cell);

} // namespace cell
