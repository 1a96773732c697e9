#include "Document.h"

#include <stdexcept>

namespace mechanism_detail {

std::uint64_t ReadHash(const Json::Value& json, const char* key) {
    const Json::Value& value = json[key];
    if (!value.isNull() && !value.isUInt64()) {
        Refuse(key, value, "an unsigned 64-bit number");
    }
    return value.asUInt64();
}

int ReadInt(const Json::Value& json, const char* key) {
    const Json::Value& value = json[key];
    if (!value.isNull() && !value.isInt()) {
        Refuse(key, value, "a whole number");
    }
    return value.asInt();
}

double ReadNumber(const Json::Value& json, const char* key) {
    const Json::Value& value = json[key];
    if (!value.isNull() && !(value.isNumeric() && DataHandle::IsSound(value.asDouble()))) {
        Refuse(key, value, "a finite number within 1e9");
    }
    return value.asDouble();
}

std::string ReadText(const Json::Value& json, const char* key) {
    const Json::Value& value = json[key];
    if (!value.isNull() && !value.isString()) {
        Refuse(key, value, "a text");
    }
    return value.asString();
}

Uuid ReadId(const Json::Value& json) {
    try {
        return Uuid::FromString(ReadText(json, "ID"));
    } catch (const std::invalid_argument&) {
        Refuse("ID", json["ID"], "an identifier of the form 8-4-4-4-12 hexadecimal digits");
    }
}

void RequireObject(const Json::Value& json) {
    if (!json.isObject()) {
        Refuse("document", json, "an object");
    }
}

} // namespace mechanism_detail
