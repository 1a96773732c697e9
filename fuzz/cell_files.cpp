#include <cell/Cell.h>
#include <cell/InputError.h>
#include <cell/documents/ArmFile.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <iterator>
#include <unistd.h>
#include <vector>

// Cell and arm files as the program reads them: a cell, or one line that says what is wrong.

namespace {

namespace fs = std::filesystem;

/// Files of examples/ with everything inline, so that a change anywhere in them counts.
const std::vector<Json::Value>& GoodFiles() {
    static const std::vector<Json::Value> files = [] {
        std::vector<Json::Value> read;
        const auto load = [](const fs::path& file) {
            std::ifstream stream(file);
            return fuzz::Parse({std::istreambuf_iterator<char>(stream), {}});
        };
        const fs::path examples = EXAMPLES_DIR;
        read.push_back(load(examples / "arms/ur_ur10e.json"));
        for (const char* name : {"arc_welding", "painting", "two_robots", "rail_and_positioner"}) {
            Json::Value cell = load(examples / "cells" / (std::string(name) + ".json"));
            for (Json::Value& item : cell["mechanisms"]) {
                if (item.isMember("model")) {
                    item["structure"] = load(examples / "cells" / item["model"].asString());
                    item.removeMember("model");
                }
            }
            fuzz::Require(!cell["mechanisms"].empty());
            read.push_back(cell);
        }
        return read;
    }();
    return files;
}

/// Gone with the process, in memory where there is such a place: a file for each input is what costs most.
const fs::path& File() {
    static const fs::path file =
        (fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) /
        ("cell_" + std::to_string(getpid()) + ".json");
    static const int removed = std::atexit([] { fs::remove(File()); });
    static_cast<void>(removed);
    return file;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    FuzzedDataProvider bytes(data, size);
    const auto& good = GoodFiles();
    // Bodies of arms cost a thousand times the reading, so most inputs are arms that are only read.
    const bool builds = bytes.ConsumeIntegralInRange(0, 15) == 0;
    const std::size_t base = builds ? bytes.ConsumeIntegralInRange<std::size_t>(0, good.size() - 1) : 0;
    std::ofstream(File(), std::ios::binary) << fuzz::ToText(fuzz::Document(bytes, good[base]));
    try {
        if (builds) {
            fuzz::Require(!cell::Cell::Load(File()).Mechanisms().empty());
        } else {
            fuzz::Require(cell::ReadArm(cell::JsonNode::Load(File())).joints.size() >= 6);
        }
    } catch (const cell::InputError& error) {
        fuzz::Require(std::string(error.what()).find('\n') == std::string::npos);
    }
    return quiet;
}
