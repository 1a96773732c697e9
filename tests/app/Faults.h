#pragma once

#include "Documents.h"

#include <cell/Cell.h>
#include <cell/InputError.h>
#include <gtest/gtest.h>
#include <sstream>

/// A change that makes a good document bad, and what the report must say.
struct Fault {
    const char* name;
    const char* path;  ///< as jsoncpp writes paths, which is also how reports do, apart from the leading dot
    const char* value; ///< JSON text; empty takes the key away
    const char* expected;
};

inline void PrintTo(const Fault& fault, std::ostream* out) { *out << fault.name; }

inline Json::Value Parse(const std::string& text) {
    std::istringstream stream(text);
    Json::Value json;
    stream >> json;
    return json;
}

inline void Apply(const Fault& fault, Json::Value& document) {
    const std::string path = fault.path;
    if (*fault.value != '\0') {
        Json::Path(path).make(document) = Parse(fault.value);
        return;
    }
    const std::size_t dot = path.rfind('.');
    Json::Value& parent = dot == 0 ? document : Json::Path(path.substr(0, dot)).make(document);
    const std::string key = path.substr(dot + 1);
    ASSERT_TRUE(parent.isMember(key)) << path;
    parent.removeMember(key);
}

/// What loading the cell reports, or that it was accepted.
inline std::string ReportOf(const std::filesystem::path& file) {
    try {
        cell::Cell::Load(file);
    } catch (const cell::InputError& error) {
        return error.what();
    }
    return "accepted";
}
