#pragma once

#include <Image_AlienPixMap.hxx>
#include <filesystem>

namespace cell {

/// @return whether the file now holds the whole picture, which a full disk is not always reported to prevent.
bool SavePicture(Image_AlienPixMap& picture, const std::filesystem::path& file);

} // namespace cell
