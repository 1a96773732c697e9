#include "../cell/Documents.h"

#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <app/commands/Commands.h>
#include <cell/InputError.h>
#include <cell/documents/ChildProcess.h>
#include <cell/documents/ShapeFile.h>
#include <cell/documents/ShapeFormats.h>
#include <csignal>
#include <thread>

using namespace cell;
using namespace std::chrono_literals;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;
namespace fs = std::filesystem;

namespace {

std::string FailureOf(const std::function<std::string()>& work, std::chrono::milliseconds limit = 60s) {
    return Thrown([&] { RunInChild(work, limit); });
}

TEST(ChildProcess, GivesTheResultOrSaysWhatHappened) {
    const std::string large(10'000'000, 'x');
    EXPECT_TRUE(RunInChild([&] { return large; }, 60s) == large);
    EXPECT_EQ(RunInChild([] { return std::string(); }, 60s), "");
    EXPECT_THAT(FailureOf([]() -> std::string { throw InputError("what it found"); }), "what it found");
    EXPECT_THAT(FailureOf([]() -> std::string {
                    std::raise(SIGKILL);
                    return "";
                }),
                HasSubstr("Killed"));
    EXPECT_THAT(FailureOf([]() -> std::string { throw 1; }), HasSubstr("crashes"));
    EXPECT_THAT(FailureOf([]() -> std::string { throw std::bad_alloc(); }), HasSubstr("memory"));
    const auto forever = []() -> std::string {
        while (true) {
            std::this_thread::sleep_for(1s);
        }
    };
    const auto started = std::chrono::steady_clock::now();
    EXPECT_EQ(FailureOf(forever, 100ms), "takes more than 0.1 s");
    EXPECT_LT(std::chrono::steady_clock::now() - started, 10s);
}

std::vector<std::string> LinesOf(const fs::path& file) {
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line + "\n");
    }
    return lines;
}

/// What is said about the file without one of its lines; empty where a shape comes of it nevertheless.
std::string ReportWithout(std::vector<std::string> lines, std::size_t line, const fs::path& file) {
    lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(line));
    std::ofstream stream(file);
    for (const std::string& text : lines) {
        stream << text;
    }
    stream.close();
    return Thrown([&] { ReadShape(file); });
}

TEST(PartFile, WithoutOneOfItsEntitiesIsRefusedForWhatIsMissing) {
    const Folder folder;
    const auto lines = LinesOf(Example("parts/branch_pipe.step"));
    const fs::path file = folder.path / "part.step";
    for (std::size_t line = 0; line < lines.size(); line += 37) {
        if (lines[line].find(" = ") == std::string::npos) {
            continue; // the rest of a list, which may be shorter
        }
        EXPECT_THAT(ReportWithout(lines, line, file),
                    AllOf(StartsWith(file.string() + ": "), HasSubstr(", expected ")))
            << lines[line];
    }
}

TEST(PartFile, BRepWithoutALineIsReadOrRefusedAtOnce) {
    const Folder folder;
    std::ostringstream out;
    Save({Example("cells/seam.json"), folder.path / "saved"}, out);
    std::vector<std::string> lines;
    for (const auto& entry : fs::recursive_directory_iterator(folder.path / "saved/mechanisms")) {
        if (entry.path().extension() == ".brep" && entry.file_size() > 10'000) {
            lines = LinesOf(entry.path());
        }
    }
    ASSERT_GT(lines.size(), 100U);
    const fs::path file = folder.path / "part.brep";
    SetShapeTimeLimit(20s);
    for (std::size_t line = 0; line < lines.size(); line += 7) {
        const std::string report = ReportWithout(lines, line, file);
        EXPECT_TRUE(
            report.empty() ||
            report.ends_with("holds no faces, expected a shape in the format of its extension, .brep"))
            << report << " without " << lines[line];
    }
    SetShapeTimeLimit(120s);
}

/// Edges are known by their numbers, and points by all of their digits.
TEST(PartFile, ComesOutOfTheChildAsItWasRead) {
    const auto vertices = [](const TopoDS_Shape& shape) {
        std::vector<std::array<double, 3>> places;
        for (TopExp_Explorer it(shape, TopAbs_VERTEX); it.More(); it.Next()) {
            const gp_Pnt p = BRep_Tool::Pnt(TopoDS::Vertex(it.Current()));
            places.push_back({p.X(), p.Y(), p.Z()});
        }
        return places;
    };
    const fs::path file = Example("parts/branch_pipe.step");
    const auto expected = vertices(ReadShapeUnguarded(file));
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(vertices(ReadShape(file)), expected);
}

} // namespace
