#pragma once

#include <cell/Cell.h>
#include <filesystem>
#include <string>

namespace cell {

/// States of the cell's systems, at most one each: from a state's own document, from a context's, or the last
/// one of a trace.
/// @throws InputError.
std::vector<GrpState> LoadStates(const std::filesystem::path& file, const Cell& cell);

/// Moves the cell to what `--state` names: a key state of the cell, which comes first, or a file of
/// LoadStates.
/// @throws InputError.
void MoveToNamedState(const std::string& nameOrFile, const Cell& cell);

} // namespace cell
