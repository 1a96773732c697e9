#pragma once

#include <fuzzer/FuzzedDataProvider.h>
#include <json/json.h>
#include <memory>
#include <string>
#include <support/Text.h>

/// Documents from bytes: either the text itself, or a good document with some of its values replaced, which
/// gets past the first check.
namespace fuzz {

inline Json::Value Parse(const std::string& text) {
    Json::Value json;
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    try {
        reader->parse(text.data(), text.data() + text.size(), &json, nullptr);
    } catch (const Json::Exception&) { // nested too deeply
        json = Json::Value();
    }
    return json;
}

inline Json::Value AnyValue(FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 8)) {
    case 0:
        return bytes.ConsumeFloatingPoint<double>();
    case 1:
        return bytes.ConsumeIntegral<int>();
    case 2:
        return Json::UInt64(bytes.ConsumeIntegral<std::uint64_t>());
    case 3:
        return bytes.ConsumeBool();
    case 4:
        return bytes.ConsumeRandomLengthString(40);
    case 5:
        return Json::Value(Json::arrayValue);
    case 6:
        return Json::Value(Json::objectValue);
    case 7:
        return bytes.ConsumeFloatingPointInRange<double>(-1000, 1000);
    default:
        return {};
    }
}

/// Walks down to some value of the document and replaces it, takes it away or repeats it.
inline void Spoil(Json::Value& root, FuzzedDataProvider& bytes) {
    Json::Value* at = &root;
    while ((at->isObject() || at->isArray()) && !at->empty() && bytes.ConsumeIntegralInRange(0, 5) > 0) {
        if (at->isArray()) {
            at = &(*at)[bytes.ConsumeIntegralInRange<Json::ArrayIndex>(0, at->size() - 1)];
            continue;
        }
        const auto names = at->getMemberNames();
        const std::string& name = names[bytes.ConsumeIntegralInRange<std::size_t>(0, names.size() - 1)];
        if (bytes.ConsumeIntegralInRange(0, 9) == 0) {
            at->removeMember(name);
            return;
        }
        at = &(*at)[name];
    }
    if (at->isArray() && bytes.ConsumeBool()) {
        at->append(at->empty() ? AnyValue(bytes) : Json::Value((*at)[0]));
    } else {
        *at = AnyValue(bytes);
    }
}

inline Json::Value Document(FuzzedDataProvider& bytes, const Json::Value& good) {
    if (bytes.ConsumeIntegralInRange(0, 3) == 0) {
        return Parse(bytes.ConsumeRemainingBytesAsString());
    }
    Json::Value json = good;
    for (int i = bytes.ConsumeIntegralInRange(0, 6); i > 0; --i) {
        Spoil(json, bytes);
    }
    return json;
}

inline std::string ToText(const Json::Value& json) {
    return Json::writeString(Json::StreamWriterBuilder(), json);
}

/// What a fuzzer holds its subject to; ends the process with the input that broke it.
inline void Require(bool holds) {
    if (!holds) {
        __builtin_trap();
    }
}

} // namespace fuzz
