#pragma once

#include <json/json.h>
#include <sstream>

/// The value after it was written to text and read again, as a host stores it.
inline Json::Value ThroughText(const Json::Value& json) {
    std::istringstream text(Json::writeString(Json::StreamWriterBuilder(), json));
    Json::Value read;
    text >> read;
    return read;
}
