#pragma once

#include <cell/model/Cell.h>
#include <filesystem>

namespace cell {

/// States of the cell's systems, at most one each: from a state's own document, from a context's, or the last
/// one of a trace.
/// @throws InputError.
std::vector<GrpState> LoadStates(const std::filesystem::path& file, const Cell& cell);

} // namespace cell
