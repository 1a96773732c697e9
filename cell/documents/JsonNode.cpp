#include <algorithm>
#include <cell/InputError.h>
#include <cell/documents/JsonNode.h>
#include <cmath>
#include <host/tools/DataHandle.h>
#include <json/writer.h>
#include <limits>

namespace cell {

namespace {

// Enough digits to recognise the value in the file, without the rounding error of its binary form.
constexpr int ShownDigits = 15;

/// Coordinates beyond a kilometre (mm) are errors in a cell, and solids lose precision there.
constexpr double FarthestOut = 1e6;

/// The first elements and the depth that a message can show at all.
constexpr Json::ArrayIndex ShownElements = 50;
constexpr int ShownDepth = 3;

Json::Value Beginning(const Json::Value& value, int depth) {
    if (!value.isArray() && !value.isObject()) {
        return value;
    }
    Json::Value beginning(value.type());
    for (auto it = value.begin(); depth > 0 && it != value.end() && beginning.size() < ShownElements; ++it) {
        (value.isArray() ? beginning.append(Json::Value()) : beginning[it.name()]) =
            Beginning(*it, depth - 1);
    }
    return beginning;
}

std::string Compact(const Json::Value& whole) {
    const Json::Value value = Beginning(whole, ShownDepth);
    Json::StreamWriterBuilder writer;
    writer["indentation"] = "";
    writer["precision"] = ShownDigits;
    writer["emitUTF8"] = true;
    return Json::writeString(writer, value);
}

} // namespace

JsonNode JsonNode::Member(const std::string& key, const Json::Value* member) const {
    return {document, member, path.empty() ? key : path + "." + key};
}

std::optional<JsonNode> JsonNode::Find(const std::string& key) const {
    if (!value->isObject()) {
        Refuse("an object");
    }
    const Json::Value* member = value->find(key.data(), key.data() + key.size());
    return member != nullptr ? std::optional(Member(key, member)) : std::nullopt;
}

JsonNode JsonNode::At(const std::string& key) const {
    auto member = Find(key);
    if (!member) {
        Member(key, value).Refuse("missing", "this key to be there");
    }
    return *member;
}

std::vector<JsonNode> JsonNode::Items(const std::string& what) const {
    if (!value->isArray()) {
        Refuse("a list of " + what);
    }
    std::vector<JsonNode> items;
    items.reserve(value->size());
    for (const Json::Value& item : *value) {
        items.push_back({document, &item, path + "[" + std::to_string(items.size()) + "]"});
    }
    return items;
}

std::vector<JsonNode> JsonNode::OptionalItems(const std::string& key, const std::string& what) const {
    const auto list = Find(key);
    return list ? list->Items(what) : std::vector<JsonNode>();
}

std::vector<std::pair<std::string, JsonNode>> JsonNode::Members() const {
    if (!value->isObject()) {
        Refuse("an object");
    }
    std::vector<std::pair<std::string, JsonNode>> members;
    for (const std::string& key : value->getMemberNames()) {
        RequireUtf8(key);
        members.emplace_back(key, At(key));
    }
    return members;
}

void JsonNode::OnlyKeys(const std::vector<const char*>& known) const {
    for (const auto& [key, member] : Members()) {
        if (std::find(known.begin(), known.end(), key) == known.end()) {
            std::string list;
            for (const char* name : known) {
                list += (list.empty() ? "" : ", ") + std::string(name);
            }
            member.Refuse("unknown key", "one of " + list);
        }
    }
}

/// The parser accepts an escaped lone surrogate, which is not valid UTF-8.
void JsonNode::RequireUtf8(const std::string& text) const {
    const std::string utf8 = DataHandle::StringToUTF8string(text);
    if (utf8 != text) {
        Refuse(utf8, "whole characters");
    }
}

double JsonNode::Number() const {
    if (!value->isNumeric() || !std::isfinite(value->asDouble())) {
        Refuse("a finite number");
    }
    return value->asDouble();
}

double JsonNode::Positive() const {
    const double number = Number();
    if (number <= 0) {
        Refuse("a number above 0");
    }
    return number;
}

double JsonNode::Length() const {
    const double length = Positive();
    if (length > FarthestOut) {
        Refuse("a length of at most 1000000 mm");
    }
    return length;
}

std::string JsonNode::Text() const {
    if (!value->isString() || value->asString().empty()) {
        Refuse("a text that is not empty");
    }
    RequireUtf8(value->asString());
    return value->asString();
}

bool JsonNode::Flag() const {
    if (!value->isBool()) {
        Refuse("true or false");
    }
    return value->asBool();
}

int JsonNode::Whole(int low, int high) const {
    if (!value->isInt() || value->asInt() < low || value->asInt() > high) {
        Refuse("a whole number from " + std::to_string(low) + " to " + std::to_string(high));
    }
    return value->asInt();
}

std::uint64_t JsonNode::Hash() const {
    if (!value->isUInt64() || value->asUInt64() == 0) {
        Refuse("a whole number from 1 to " + std::to_string(std::numeric_limits<std::uint64_t>::max()));
    }
    return value->asUInt64();
}

std::vector<double> JsonNode::Numbers() const {
    if (!value->isArray()) {
        Refuse("a list of numbers");
    }
    std::vector<double> numbers;
    numbers.reserve(value->size());
    for (const Json::Value& item : *value) {
        if (!item.isNumeric() || !std::isfinite(item.asDouble())) {
            Items("numbers")[numbers.size()].Number(); // refuses it by its place
        }
        numbers.push_back(item.asDouble());
    }
    return numbers;
}

spatial::Vec JsonNode::Triple() const {
    if (!value->isArray() || value->size() != 3) {
        Refuse("three numbers");
    }
    const std::vector<double> numbers = Numbers();
    return {numbers[0], numbers[1], numbers[2]};
}

spatial::Vec JsonNode::Position() const {
    const spatial::Vec position = Triple();
    if (std::max({std::abs(position.x), std::abs(position.y), std::abs(position.z)}) > FarthestOut) {
        Refuse("three numbers from -1000000 to 1000000 mm");
    }
    return position;
}

void JsonNode::Refuse(const std::string& expected) const { Refuse(Compact(*value), expected); }

void JsonNode::Refuse(const std::string& shown, const std::string& expected) const {
    throw InputError(File().string(), path, shown, expected);
}

void JsonNode::Refuse(const RefusedValue& inside) const {
    Member(inside.Key(), value).Refuse(inside.Shown(), inside.Expected());
}

} // namespace cell
