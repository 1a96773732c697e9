#pragma once

#include <cell/documents/JsonNode.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <string>

namespace cell {

/// Gives a mechanism that was built from an item of a cell file what its "document" and its "package" say:
/// numbers, and the identifiers of its parts. Items without these keys change nothing.
/// @throws InputError naming the document or the manifest.
void RestoreSaved(GenericEntityConfig& entity, const JsonNode& item);

/// Writes a mechanism's document and package into a folder, under its name and hash.
/// @param item gets the keys "document" and "package", relative to `base`.
void SaveMechanism(GenericEntityConfig& entity, const std::filesystem::path& base, const std::string& folder,
                   Json::Value& item);

} // namespace cell
