#pragma once

#include <cell/Cell.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <host/tools/Uuid.h>
#include <json/writer.h>
#include <string>
#include <support/Text.h>
#include <support/Thrown.h>

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
    std::filesystem::path WriteJson(const std::string& name, const Json::Value& json) const {
        return Write(name, Json::writeString(Json::StreamWriterBuilder(), json));
    }

    const std::filesystem::path path;
};

inline std::filesystem::path Example(const std::string& name) {
    return std::filesystem::path(EXAMPLES_DIR) / name;
}

inline std::string Read(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline Json::Value ReadDocument(const std::filesystem::path& file) { return Parsed(Read(file)); }

/// A cell of the examples that can stand in any folder: its structures are inside, its parts at full paths.
inline Json::Value ExampleCell(const std::string& name) {
    const std::filesystem::path folder = Example("cells");
    Json::Value json = ReadDocument(folder / name);
    for (Json::Value& item : json["mechanisms"]) {
        if (item.isMember("model")) {
            item["structure"] = ReadDocument(folder / item["model"].asString());
            item.removeMember("model");
        }
        if (item.isMember("file")) {
            item["file"] = (folder / item["file"].asString()).string();
        }
    }
    return json;
}

/// What loading the cell reports; empty when it is accepted.
inline std::string ReportOf(const std::filesystem::path& file) {
    return Thrown([&] { cell::Cell::Load(file); });
}

/// A change that makes a good document bad, and what the report must say.
struct Fault {
    std::string path;  ///< as jsoncpp writes paths, which is also how reports do, apart from the leading dot
    std::string value; ///< JSON text; empty takes the key away
    std::string expected;

    std::string Key() const { return path.substr(1); }
    void Apply(Json::Value& document) const {
        const std::size_t dot = path.rfind('.');
        if (!value.empty()) {
            Json::Path(path).make(document) = Parsed(value);
        } else {
            Json::Value& parent = dot == 0 ? document : Json::Path(path.substr(0, dot)).make(document);
            ASSERT_TRUE(parent.removeMember(path.substr(dot + 1), nullptr)) << path;
        }
    }
    friend void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.path << " = " << fault.value; }
};
