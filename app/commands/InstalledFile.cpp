#include <app/commands/InstalledFile.h>

namespace fs = std::filesystem;

fs::path cell::InstalledFile(const fs::path& file) {
    std::error_code error;
    if (file.is_absolute() || fs::exists(file, error)) {
        return file;
    }
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    const fs::path installed = (program.parent_path() / DATA_FROM_PROGRAM / file).lexically_normal();
    return !error && fs::exists(installed, error) ? installed : file;
}
