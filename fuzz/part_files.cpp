#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <Bnd_Box.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <cell/InputError.h>
#include <cell/documents/ShapeFile.h>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <fuzz/Documents.h>
#include <unistd.h>
#include <vector>

// Part files: good ones of each format with lines and numbers changed. They are read as the program reads
// them, in a child process; what comes of it must be safe to work with in this one.

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

constexpr auto TimeLimit = std::chrono::seconds(20);

Lines ReadLines(const fs::path& file) {
    Lines lines;
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    fuzz::Require(!lines.empty());
    return lines;
}

const std::vector<fs::path>& GoodFiles() {
    static const std::vector<fs::path> files = {fs::path(PARTS_DIR) / "branch_pipe.step",
                                                fs::path(SEEDS_DIR) / "plate.brep",
                                                fs::path(SEEDS_DIR) / "plate.stl"};
    return files;
}

std::size_t AnyIndex(FuzzedDataProvider& bytes, std::size_t size) {
    return bytes.ConsumeIntegralInRange<std::size_t>(0, size - 1);
}

void ChangeNumber(std::string& line, FuzzedDataProvider& bytes) {
    constexpr const char* Digits = "0123456789";
    const std::size_t start =
        line.find_first_of(Digits, bytes.ConsumeIntegralInRange<std::size_t>(0, line.size()));
    if (start != std::string::npos) {
        const std::size_t end = std::min(line.find_first_not_of(Digits, start), line.size());
        line.replace(start, end - start,
                     bytes.ConsumeBool() ? std::to_string(bytes.ConsumeIntegralInRange(-10, 2000))
                                         : bytes.ConsumeRandomLengthString(12));
    }
}

void Spoil(Lines& lines, FuzzedDataProvider& bytes) {
    const std::size_t at = AnyIndex(bytes, lines.size());
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        if (lines.size() > 1) {
            lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
        }
        break;
    case 1:
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(AnyIndex(bytes, lines.size())),
                     std::string(lines[at]));
        break;
    case 2:
        ChangeNumber(lines[at], bytes);
        break;
    default:
        std::swap(lines[at], lines[AnyIndex(bytes, lines.size())]);
    }
}

/// In memory where there is such a place; gone with the process.
const fs::path& Folder() {
    static const fs::path folder =
        (fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) /
        ("parts_" + std::to_string(getpid()));
    static const int removed = std::atexit([] { fs::remove_all(Folder()); });
    static_cast<void>(removed);
    return folder;
}

void Use(const TopoDS_Shape& shape) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(shape, box, Standard_False);
    if (box.IsVoid()) { // triangles without a surface
        BRepBndLib::Add(shape, box);
    }
    fuzz::Require(!box.IsVoid());
    BRepMesh_IncrementalMesh(shape, std::max(0.01 * std::sqrt(box.SquareExtent()), 1e-3));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = (Message::DefaultMessenger()->ChangePrinters().Clear(),
                               cell::SetShapeTimeLimit(TimeLimit), fs::create_directory(Folder()));
    static_cast<void>(quiet);
    FuzzedDataProvider bytes(data, size);
    const fs::path& good = GoodFiles()[AnyIndex(bytes, GoodFiles().size())];
    Lines lines = ReadLines(good);
    for (int i = bytes.ConsumeIntegralInRange(0, 4); i > 0; --i) {
        Spoil(lines, bytes);
    }
    const fs::path file = Folder() / ("part" + good.extension().string());
    {
        std::ofstream stream(file, std::ios::binary);
        for (const std::string& line : lines) {
            stream << line << '\n';
        }
    }
    try {
        Use(cell::ReadShape(file));
    } catch (const cell::InputError& error) {
        fuzz::Require(std::string(error.what()).find('\n') == std::string::npos);
    }
    return 0;
}
