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

} // namespace

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
    if (!write(temporary)) {
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
