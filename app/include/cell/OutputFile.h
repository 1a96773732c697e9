#pragma once

#include <filesystem>
#include <functional>

namespace cell {

/// Lets `write` fill a file beside the target and then puts it in the target's place, so that the target is
/// the old file or the whole new one, never a part. The folder is made where it does not exist.
/// @param write answers whether it succeeded. @throws InputError naming the target.
void WriteWhole(const std::filesystem::path& target,
                const std::function<bool(const std::filesystem::path& beside)>& write);

/// The same for a text.
void WriteWhole(const std::filesystem::path& target, const std::string& text);

} // namespace cell
