#pragma once

#include <cstdint>
#include <host/tools/DataHandle.h>
#include <host/tools/Uuid.h>
#include <json/value.h>
#include <string>

/// Reading the documents of mechanisms. A key that is not there, or null, reads as zero; a value of another
/// type is refused by name before anything of the entity has changed.
namespace mechanism_detail {

using DataHandle::Refuse;

std::uint64_t ReadHash(const Json::Value& json, const char* key);
int ReadInt(const Json::Value& json, const char* key);
/// One that DataHandle::IsSound; a missing key reads as 0.
double ReadNumber(const Json::Value& json, const char* key);
std::string ReadText(const Json::Value& json, const char* key);
/// The key "ID".
Uuid ReadId(const Json::Value& json);
/// The kind that a document names under "type" is for its readers to know; loading does not look at it.
/// @throws std::invalid_argument when the document is no object.
void RequireObject(const Json::Value& json);

} // namespace mechanism_detail
