#include <cell/text/Placing.h>
#include <cstdio>
#include <fcntl.h>
#include <host/tools/Uuid.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void SyncOne(const fs::path& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file >= 0) {
        fsync(file);
        close(file);
    }
}

std::error_code Rename(const fs::path& from, const fs::path& to, unsigned flags) {
    const bool done = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), flags) == 0;
    return done ? std::error_code() : std::error_code(errno, std::generic_category());
}

bool IsUnsupported(const std::error_code& error) {
    return error == std::errc::invalid_argument || error == std::errc::function_not_supported;
}

/// In three steps; a process killed in between leaves the old folder under a name beside its own.
std::error_code ExchangeByRenames(const fs::path& made, const fs::path& place) {
    const fs::path old = place.string() + ".old-" + Uuid::CreateUuid().ToString();
    std::error_code error;
    fs::rename(place, old, error);
    const bool replaces = !error;
    fs::rename(made, place, error);
    if (replaces) {
        std::error_code ignored;
        fs::rename(old, error ? place : made, ignored);
    }
    return error;
}

} // namespace

fs::path cell::FollowLinks(const fs::path& target) {
    constexpr int MostLinks = 40; // the limit of the operating system
    fs::path place = target;
    for (int links = 0; links <= MostLinks; ++links) {
        std::error_code error;
        const fs::file_status status = fs::symlink_status(place, error);
        if (status.type() == fs::file_type::none) {
            throw fs::filesystem_error("", target, error);
        }
        if (status.type() != fs::file_type::symlink || place.native().starts_with("/proc/")) {
            return place;
        }
        place = place.parent_path() / fs::read_symlink(place);
    }
    throw fs::filesystem_error("", target, std::make_error_code(std::errc::too_many_symbolic_link_levels));
}

void cell::Sync(const fs::path& made) {
    if (fs::is_directory(made)) {
        for (const auto& entry : fs::recursive_directory_iterator(made)) {
            SyncOne(entry.path());
        }
    }
    SyncOne(made);
}

std::error_code cell::ReplaceFile(const fs::path& made, const fs::path& place) {
    std::error_code error;
    const fs::file_status old = fs::status(place, error);
    if (fs::is_regular_file(old)) {
        fs::permissions(made, old.permissions(), error); // who may read it stays as it was
    }
    fs::rename(made, place, error);
    SyncOne(place.parent_path());
    return error;
}

std::error_code cell::ExchangeFolder(const fs::path& made, const fs::path& place) {
    constexpr int Tries = 16; // another process may make or remove the place in between
    std::error_code error;
    for (int i = 0; i < Tries; ++i) {
        error = Rename(made, place, RENAME_EXCHANGE);
        if (error == std::errc::no_such_file_or_directory) {
            error = Rename(made, place, RENAME_NOREPLACE);
        }
        if (error != std::errc::file_exists) {
            break;
        }
    }
    if (IsUnsupported(error)) {
        error = ExchangeByRenames(made, place);
    }
    SyncOne(place.parent_path());
    return error;
}
