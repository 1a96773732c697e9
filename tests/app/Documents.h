#pragma once

#include <filesystem>
#include <fstream>
#include <host/tools/Uuid.h>
#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>
#include <stdexcept>
#include <string>

/// A folder of its own for one test, gone afterwards.
class Folder {
public:
    Folder() : path(std::filesystem::temp_directory_path() / ("cell_test_" + Uuid::CreateUuid().ToString())) {
        std::filesystem::create_directories(path);
    }
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::filesystem::path Write(const std::string& name, const std::string& text) const {
        std::ofstream(path / name, std::ios::binary) << text;
        return path / name;
    }

    const std::filesystem::path path;
};

inline std::filesystem::path Example(const std::string& name) {
    return std::filesystem::path(EXAMPLES_DIR) / name;
}

inline Json::Value ReadDocument(const std::filesystem::path& file) {
    std::ifstream stream(file);
    Json::Value json;
    std::string problems;
    if (!Json::parseFromStream(Json::CharReaderBuilder(), stream, &json, &problems)) {
        throw std::runtime_error(file.string() + ": " + problems);
    }
    return json;
}

inline std::string ToText(const Json::Value& json) {
    return Json::writeString(Json::StreamWriterBuilder(), json);
}
