#include <cell/InputError.h>
#include <cell/text/OutputFile.h>
#include <cell/text/Placing.h>
#include <cell/text/ScratchFolder.h>
#include <fstream>
#include <iostream>
#include <iterator>
#include <new>

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(const fs::path& target, const std::string& why) {
    throw cell::InputError(target.string(), "", why,
                           "a place that can be written to, with room for the result");
}

/// Runs a step; errors of the file system are reported with the target that the user gave.
template <typename Step>
auto Named(const fs::path& target, const Step& step) {
    try {
        return step();
    } catch (const fs::filesystem_error& error) {
        Refuse(target, "cannot be written (" + error.code().message() + ")");
    }
}

/// The folder that the place lies in, made where it does not exist.
fs::path FolderOf(const fs::path& place) {
    fs::path folder = place.has_parent_path() ? place.parent_path() : fs::path(".");
    fs::create_directories(folder);
    return folder;
}

void RequireOwn(const fs::path& target, const fs::path& folder,
                const std::function<bool(const std::string&)>& isOwn) {
    if (!fs::exists(folder)) {
        return;
    }
    if (!fs::is_directory(folder)) {
        throw cell::InputError(target.string(), "", "is a file", "the name of a folder");
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).string();
        if (!isOwn(name)) {
            throw cell::InputError(target.string(), "", "holds " + name,
                                   "a new or empty folder, or one that the same command wrote");
        }
    }
}

/// A report that names the user's target instead of the temporary file.
std::string About(const fs::path& target, const fs::path& scratch, std::string report) {
    for (std::size_t at = 0; (at = report.find(scratch.string(), at)) != std::string::npos;) {
        report.replace(at, scratch.string().size(), target.string());
    }
    return report;
}

void Fill(const fs::path& target, const fs::path& made, const std::function<void(const fs::path&)>& fill) {
    try {
        fs::create_directory(made);
        fill(made);
        cell::Sync(made);
    } catch (const cell::InputError& report) {
        throw cell::InputError(About(target, made, report.what()));
    } catch (const fs::filesystem_error&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& report) {
        Refuse(target, About(target, made, report.what()));
    }
}

bool Succeeds(const fs::path& file, const std::function<bool(const fs::path&)>& write) {
    try {
        return write(file);
    } catch (const cell::InputError&) {
        throw;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) { // the kernel's writers throw many things at a full disk
        return false;
    }
}

bool IsWritten(const fs::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    return stream.good();
}

void WriteTo(std::ostream& stream, const fs::path& target, const std::string& bytes) {
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.flush();
    if (!stream) {
        Refuse(target, "cannot be written");
    }
}

/// Devices and pipes are written to directly; they are never replaced.
void WriteStraight(const fs::path& target, const fs::path& place, const std::string& bytes) {
    if (cell::IsStandardOutput(target)) {
        WriteTo(std::cout, target, bytes);
    } else {
        std::ofstream stream(place, std::ios::binary | std::ios::app);
        WriteTo(stream, target, bytes);
    }
}

/// The result of `write` on a temporary file, which is removed afterwards.
std::string BytesOf(const fs::path& target, const std::function<bool(const fs::path&)>& write) {
    const cell::ScratchFolder scratch(fs::temp_directory_path());
    const fs::path made = scratch.Path() / target.filename();
    if (!Succeeds(made, write)) {
        Refuse(target, "cannot be written");
    }
    std::ifstream stream(made, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsReplaceable(const fs::path& target, const fs::path& place) {
    if (cell::IsStandardOutput(target) || place.native().starts_with("/proc/")) {
        return false;
    }
    const fs::file_status status = fs::status(place);
    if (place.filename().empty() || fs::is_directory(status)) {
        Refuse(target, "is a folder");
    }
    return !fs::exists(status) || fs::is_regular_file(status);
}

void ReplaceBy(const fs::path& target, const fs::path& place,
               const std::function<bool(const fs::path&)>& write) {
    const cell::ScratchFolder scratch(FolderOf(place));
    const fs::path made = scratch.Path() / place.filename();
    if (!Succeeds(made, write)) {
        Refuse(target, "cannot be written");
    }
    cell::Sync(made);
    const auto kept = cell::ScratchFolder::Keep();
    if (const std::error_code error = cell::ReplaceFile(made, place)) {
        Refuse(target, "cannot be replaced (" + error.message() + ")");
    }
}

} // namespace

bool cell::IsStandardOutput(const fs::path& target) {
    return target == "-" || target == "/dev/stdout" || target == "/dev/fd/1" || target == "/proc/self/fd/1";
}

std::ostream& cell::RemarksBeside(const fs::path& target, std::ostream& out) {
    return IsStandardOutput(target) ? std::cerr : out;
}

void cell::WriteFolder(const fs::path& target, const std::function<bool(const std::string&)>& isOwn,
                       const std::function<void(const fs::path&)>& fill) {
    if (IsStandardOutput(target)) {
        throw InputError(target.string(), "", "is standard output", "the name of a folder");
    }
    Named(target, [&] {
        const fs::path normal = fs::absolute(target).lexically_normal();
        const fs::path place = FollowLinks(normal.has_filename() ? normal : normal.parent_path());
        RequireOwn(target, place, isOwn);
        const ScratchFolder scratch(FolderOf(place));
        const fs::path made = scratch.Path() / place.filename();
        Fill(target, made, fill);
        // Otherwise a signal would remove the new folder's files while it replaces the old one.
        const auto kept = ScratchFolder::Keep();
        if (const std::error_code error = ExchangeFolder(made, place)) {
            Refuse(target, "cannot be replaced (" + error.message() + ")");
        }
        try {
            RequireOwn(target, made, isOwn); // entries that appeared while the new folder was filled
        } catch (const InputError&) {
            ExchangeFolder(made, place);
            throw;
        }
    });
}

void cell::WriteWhole(const fs::path& target, const std::function<bool(const fs::path&)>& write) {
    Named(target, [&] {
        const fs::path place = FollowLinks(target);
        if (IsReplaceable(target, place)) {
            ReplaceBy(target, place, write);
        } else {
            WriteStraight(target, place, BytesOf(target, write));
        }
    });
}

void cell::WriteWhole(const fs::path& target, const std::string& text) {
    WriteWhole(target, [&](const fs::path& file) { return IsWritten(file, text); });
}

void cell::WriteText(const fs::path& file, const std::string& text) {
    if (!IsWritten(file, text)) {
        Refuse(file, "cannot be written");
    }
}
