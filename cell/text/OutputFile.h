#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>

/// Output that is whole or not there. Links are followed to what they name; devices, pipes and the like are
/// written to as they are; "-" is standard output.
namespace cell {

/// Lets `write` fill a file and then puts it in the target's place in one step, so that the target is the old
/// file or the whole new one at any moment, power loss included. The folder is made where it does not exist.
/// @param write gets the file to fill, which ends as the target does, and answers whether it succeeded.
/// @throws InputError naming the target.
void WriteWhole(const std::filesystem::path& target,
                const std::function<bool(const std::filesystem::path& file)>& write);

/// The same for a text.
void WriteWhole(const std::filesystem::path& target, const std::string& text);

/// Lets `fill` fill a new folder and then puts it in the target's place in one step.
/// @param isOwn tells of a path below the folder whether this kind of folder holds it: a target that holds
/// anything else is refused, since that would be lost.
/// @throws InputError naming the target, and whatever `fill` throws.
void WriteFolder(const std::filesystem::path& target, const std::function<bool(const std::string&)>& isOwn,
                 const std::function<void(const std::filesystem::path& folder)>& fill);

/// Writes a text into a file of a folder that is not in its place yet. @throws InputError naming the file.
void WriteText(const std::filesystem::path& file, const std::string& text);

/// Whether the name means standard output: "-", or the system's name for it.
bool IsStandardOutput(const std::filesystem::path& target);

/// Where to say what was done: not on standard output where the result itself goes there.
std::ostream& RemarksBeside(const std::filesystem::path& target, std::ostream& out);

} // namespace cell
