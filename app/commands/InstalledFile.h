#pragma once

#include <filesystem>

namespace cell {

/// The file itself where it exists. A relative path that does not is looked for below the data installed with
/// this program, so that the examples can be named from anywhere.
std::filesystem::path InstalledFile(const std::filesystem::path& file);

} // namespace cell
