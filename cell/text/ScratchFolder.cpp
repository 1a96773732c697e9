#include <cell/text/ScratchFolder.h>
#include <fcntl.h>
#include <host/tools/Uuid.h>
#include <mutex>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr const char* Prefix = ".mechanism-cell-";

/// All folders of this process. Never destroyed: signals may come until the very end.
struct Registry {
    std::mutex mutex;
    std::set<fs::path> folders;
};

Registry& All() {
    static auto* const registry = new Registry;
    return *registry;
}

int OpenFolder(const fs::path& folder) {
    return open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

/// The lock of a folder; -1 where another process removed it before it was locked.
int LockNew(const fs::path& folder) {
    const int lock = OpenFolder(folder);
    if (lock < 0 && errno != ENOENT) {
        throw fs::filesystem_error("", folder, std::error_code(errno, std::generic_category()));
    }
    struct stat status {};
    if (lock >= 0 && flock(lock, LOCK_EX) == 0 && fstat(lock, &status) == 0 && status.st_nlink == 0) {
        close(lock);
        return -1;
    }
    return lock;
}

/// Where locks are not supported nothing is removed.
void RemoveIfAbandoned(const fs::path& folder) {
    const int lock = OpenFolder(folder);
    if (lock < 0) {
        return;
    }
    if (flock(lock, LOCK_EX | LOCK_NB) == 0) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
    close(lock);
}

void RemoveAbandoned(const fs::path& place) {
    std::error_code error;
    std::set<fs::path> found;
    for (fs::directory_iterator it(place, error), end; !error && it != end; it.increment(error)) {
        if (it->path().filename().native().starts_with(Prefix)) {
            found.insert(it->path());
        }
    }
    for (const fs::path& folder : found) {
        RemoveIfAbandoned(folder);
    }
}

} // namespace

cell::ScratchFolder::ScratchFolder(const fs::path& place) {
    RemoveAbandoned(place);
    const std::scoped_lock guard(All().mutex);
    while (lock < 0) {
        path = place / (Prefix + Uuid::CreateUuid().ToString());
        fs::create_directory(path);
        lock = LockNew(path);
    }
    All().folders.insert(path);
}

cell::ScratchFolder::~ScratchFolder() {
    const std::scoped_lock guard(All().mutex);
    std::error_code ignored;
    fs::remove_all(path, ignored);
    All().folders.erase(path);
    close(lock);
}

std::unique_lock<std::mutex> cell::ScratchFolder::Keep() { return std::unique_lock(All().mutex); }

void cell::ScratchFolder::RemoveAllForExit() {
    // Other threads may still be writing into them, which makes removing fail for as long.
    constexpr int Tries = 100;
    All().mutex.lock();
    for (const fs::path& folder : All().folders) {
        std::error_code error;
        for (int i = 0; i < Tries && fs::exists(folder, error); ++i) {
            fs::remove_all(folder, error);
        }
    }
}
