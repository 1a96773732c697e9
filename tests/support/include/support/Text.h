#pragma once

#include <json/json.h>
#include <sstream>

/// The value of a JSON text.
inline Json::Value Parsed(const std::string& text) {
    Json::Value read;
    std::istringstream(text) >> read;
    return read;
}

/// The value after it was written to text and read again, as a host stores it.
inline Json::Value ThroughText(const Json::Value& json) {
    return Parsed(Json::writeString(Json::StreamWriterBuilder(), json));
}
