#pragma once

#include <filesystem>
#include <functional>
#include <set>
#include <string>

namespace cell {

/// Lets `write` fill a file beside the target and then puts it in the target's place, so that the target is
/// the old file or the whole new one, never a part. The folder is made where it does not exist.
/// @param write answers whether it succeeded. @throws InputError naming the target.
void WriteWhole(const std::filesystem::path& target,
                const std::function<bool(const std::filesystem::path& beside)>& write);

/// The same for a text.
void WriteWhole(const std::filesystem::path& target, const std::string& text);

/// Lets `fill` fill a folder beside the target and then puts it in the target's place.
/// @param known what a folder of this kind may hold: one that holds anything else is refused, since that
/// would be lost. @throws InputError naming the target, and whatever `fill` throws.
void WriteFolder(const std::filesystem::path& target, const std::set<std::string>& known,
                 const std::function<void(const std::filesystem::path& beside)>& fill);

} // namespace cell
