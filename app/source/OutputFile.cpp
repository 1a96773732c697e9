#include <cell/InputError.h>
#include <cell/OutputFile.h>
#include <fstream>
#include <host/tools/Uuid.h>
#include <string>

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(const fs::path& target, const std::string& why) {
    throw cell::InputError(target.string(), "", why, "a place that can be written to");
}

void MakeFolder(const fs::path& target) {
    const fs::path folder = target.parent_path();
    std::error_code error;
    if (!folder.empty() && !fs::is_directory(folder) && !fs::create_directories(folder, error)) {
        Refuse(target, "its folder cannot be made" + (error ? " (" + error.message() + ")" : std::string()));
    }
}

fs::path WithoutEndSlash(const fs::path& target) {
    const fs::path normal = fs::absolute(target).lexically_normal();
    return normal.has_filename() ? normal : normal.parent_path();
}

void RequireReplaceable(const fs::path& target, const std::set<std::string>& known) {
    std::error_code error;
    if (!fs::exists(target, error)) {
        return;
    }
    if (!fs::is_directory(target)) {
        throw cell::InputError(target.string(), "", "is a file", "the name of a folder");
    }
    for (const auto& entry : fs::directory_iterator(target, error)) {
        if (!known.contains(entry.path().filename().string())) {
            throw cell::InputError(target.string(), "", "holds " + entry.path().filename().string(),
                                   "a new or empty folder, or one that the same command wrote");
        }
    }
    if (error) {
        Refuse(target, "cannot be read (" + error.message() + ")");
    }
}

/// A report that names the place the user asked for, not the one beside it that is gone.
std::string About(const fs::path& place, const fs::path& beside, std::string report) {
    for (std::size_t at = 0; (at = report.find(beside.string(), at)) != std::string::npos;) {
        report.replace(at, beside.string().size(), place.string());
    }
    return report;
}

/// Puts `beside` in the target's place; what stood there is taken back where that fails.
void PutInPlace(const fs::path& beside, const fs::path& target) {
    const fs::path old = beside.string() + ".old";
    std::error_code error;
    const bool replaces = fs::exists(target, error);
    if (replaces) {
        fs::rename(target, old, error);
    }
    if (!error) {
        fs::rename(beside, target, error);
    }
    if (error) {
        const std::string why = error.message();
        if (replaces && !fs::exists(target, error)) {
            fs::rename(old, target, error);
        }
        fs::remove_all(beside, error);
        Refuse(target, "cannot be replaced (" + why + ")");
    }
    fs::remove_all(old, error);
}

} // namespace

void cell::WriteFolder(const fs::path& target, const std::set<std::string>& known,
                       const std::function<void(const fs::path&)>& fill) {
    const fs::path place = WithoutEndSlash(target);
    RequireReplaceable(place, known);
    MakeFolder(place);
    const fs::path beside = place.string() + "." + Uuid::CreateUuid().ToString();
    std::error_code error;
    if (!fs::create_directory(beside, error)) {
        Refuse(place, "cannot be written (" + error.message() + ")");
    }
    try {
        fill(beside);
    } catch (const InputError& report) {
        fs::remove_all(beside, error);
        throw InputError(About(place, beside, report.what()));
    } catch (const std::exception& report) {
        fs::remove_all(beside, error);
        Refuse(place, About(place, beside, report.what()));
    } catch (...) {
        fs::remove_all(beside, error);
        throw;
    }
    PutInPlace(beside, place);
}

void cell::WriteWhole(const fs::path& target, const std::function<bool(const fs::path&)>& write) {
    if (target.filename().empty() || fs::is_directory(target)) {
        Refuse(target, "is a folder");
    }
    MakeFolder(target);
    // The extension stays last: image writers choose the format by it.
    const std::string beside =
        target.stem().string() + "." + Uuid::CreateUuid().ToString() + target.extension().string();
    const fs::path temporary = target.parent_path() / beside;
    std::error_code error;
    bool isWritten = false;
    try {
        isWritten = write(temporary);
    } catch (...) {
        fs::remove(temporary, error);
        throw;
    }
    if (!isWritten) {
        fs::remove(temporary, error);
        Refuse(target, "cannot be written");
    }
    fs::rename(temporary, target, error);
    if (error) {
        const std::string why = error.message();
        fs::remove(temporary, error);
        Refuse(target, "cannot be replaced (" + why + ")");
    }
}

void cell::WriteWhole(const fs::path& target, const std::string& text) {
    WriteWhole(target, [&](const fs::path& beside) {
        std::ofstream stream(beside, std::ios::binary);
        stream << text;
        stream.close();
        return stream.good();
    });
}
