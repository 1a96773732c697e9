#pragma once

#include <Image_AlienPixMap.hxx>
#include <filesystem>
#include <scene/Picture.h>

namespace cell {

/// Pictures of one size side by side, row by row.
class ContactSheet {
public:
    /// @param count how many pictures there will be.
    ContactSheet(int count_, int width_, int height_);

    /// Puts the next picture in its place. @return false for one of another size or format.
    bool Add(const Image_AlienPixMap& picture);
    bool Save(const std::filesystem::path& file) { return SavePicture(sheet, file); }

private:
    int columns;
    Standard_Size width;
    Standard_Size height;
    std::size_t added = 0;
    Image_AlienPixMap sheet;
};

} // namespace cell
