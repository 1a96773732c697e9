#pragma once

#include <filesystem>
#include <mutex>

namespace cell {

/// A hidden folder for files that are still being written. It is removed with the object and on signals; what
/// a killed process left in the same place is removed when the next one is made there. A lock tells which of
/// them are still in use.
class ScratchFolder {
public:
    /// @param place the folder to make it in. @throws std::filesystem::filesystem_error.
    explicit ScratchFolder(const std::filesystem::path& place);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path; }

    /// As long as it lives no signal empties a folder, so that what is in one can be put in its place whole;
    /// waits for ever where a signal has begun to.
    static std::unique_lock<std::mutex> Keep();
    /// Removes all that exist, and lets no thread make or leave one any more: the process is about to end.
    static void RemoveAllForExit();

private:
    std::filesystem::path path;
    int lock = -1;
};

} // namespace cell
