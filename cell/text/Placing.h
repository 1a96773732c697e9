#pragma once

#include <filesystem>
#include <system_error>

/// Steps of putting a file or folder in its place.
namespace cell {

/// What the name stands for when all links are followed, up to the name's first part that does not exist;
/// names of open files (/proc/self/fd/1) stay. @throws std::filesystem::filesystem_error for loops and the
/// like.
std::filesystem::path FollowLinks(const std::filesystem::path& target);

/// Waits until the file, or everything in the folder, is on the disk.
void Sync(const std::filesystem::path& made);

/// Moves a file into a place where an older one may stand, which is gone then.
std::error_code ReplaceFile(const std::filesystem::path& made, const std::filesystem::path& place);

/// Moves a folder into a place where an older one may stand, which is at `made` then. Where the system can
/// exchange two names in one step, the place holds one of the two at any moment.
std::error_code ExchangeFolder(const std::filesystem::path& made, const std::filesystem::path& place);

} // namespace cell
