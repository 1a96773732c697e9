#pragma once

#include <cstdint>
#include <host/tools/DataHandle.h>
#include <host/tools/Uuid.h>
#include <json/value.h>
#include <string>

/// Readers for the documents of mechanisms. A missing or null key reads as zero; a value of another type is
/// refused by key before anything of the entity changes.
namespace mechanism_detail {

using DataHandle::Refuse;

std::uint64_t ReadHash(const Json::Value& json, const char* key);
int ReadInt(const Json::Value& json, const char* key);
/// A number that satisfies DataHandle::IsSound; a missing key reads as 0.
double ReadNumber(const Json::Value& json, const char* key);
std::string ReadText(const Json::Value& json, const char* key);
/// The key "ID".
Uuid ReadId(const Json::Value& json);
/// Checks that the document is an object. Its "type" is for the code that chooses the class; loading ignores
/// it.
/// @throws std::invalid_argument when it is no object.
void RequireObject(const Json::Value& json);

} // namespace mechanism_detail
