#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <host/tools/RefusedValue.h>
#include <json/value.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cell {

/// A value of a JSON document that knows its file and key path, so that whatever is wrong with it can be said
/// precisely. Every reader throws InputError; copies share the document.
class JsonNode {
public:
    /// Reads a document, strictly: no comments, no trailing text, no repeated keys.
    static JsonNode Load(const std::filesystem::path& file);

    const std::filesystem::path& File() const { return document->file; }
    const std::string& Path() const { return path; }
    const Json::Value& Value() const { return *value; }

    JsonNode At(const std::string& key) const;
    std::optional<JsonNode> Find(const std::string& key) const;
    /// The elements of an array. @param what names one of them in the message.
    std::vector<JsonNode> Items(const std::string& what) const;
    /// The elements of an array that may be left out.
    std::vector<JsonNode> OptionalItems(const std::string& key, const std::string& what) const;
    /// The members of an object, in the order of their keys.
    std::vector<std::pair<std::string, JsonNode>> Members() const;
    /// Refuses every key that is not listed: a misspelt optional key would otherwise do nothing.
    void OnlyKeys(const std::vector<const char*>& known) const;

    double Number() const;
    /// A number above zero.
    double Positive() const;
    /// The size of something in a cell: above zero and at most a kilometre, mm.
    double Length() const;
    std::string Text() const;
    bool Flag() const;
    /// A whole number from `low` to `high`.
    int Whole(int low, int high) const;
    /// A whole number from 1 to 2^64 - 1.
    std::uint64_t Hash() const;
    std::vector<double> Numbers() const;
    std::array<double, 3> Triple() const;
    /// A point of a cell: three numbers (mm), none farther out than a kilometre.
    std::array<double, 3> Position() const;

    /// Reports the value as something other than what was expected.
    [[noreturn]] void Refuse(const std::string& expected) const;
    /// The same with a text of its own in place of the value.
    [[noreturn]] void Refuse(const std::string& shown, const std::string& expected) const;
    /// Passes on what the library found wrong inside this value.
    [[noreturn]] void Refuse(const RefusedValue& inside) const;

private:
    struct Document {
        std::filesystem::path file;
        Json::Value root;
    };

    JsonNode(std::shared_ptr<const Document> document_, const Json::Value* value_, std::string path_)
        : document(std::move(document_)), value(value_), path(std::move(path_)) {}

    void RequireUtf8(const std::string& text) const;
    JsonNode Member(const std::string& key, const Json::Value* member) const;

    std::shared_ptr<const Document> document;
    const Json::Value* value;
    std::string path;
};

} // namespace cell
