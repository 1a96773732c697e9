#include <scene/Picture.h>

// Image_AlienPixMap does not report failed writes, so the file is read back.
bool cell::SavePicture(Image_AlienPixMap& picture, const std::filesystem::path& file) {
    // It chooses the format by the name's end; standard output has none.
    const std::filesystem::path named = file.extension().empty() ? file.string() + ".png" : file.string();
    Image_AlienPixMap written;
    const bool isWhole = !picture.IsEmpty() && picture.Save(named.c_str()) && written.Load(named.c_str()) &&
                         written.Width() == picture.Width() && written.Height() == picture.Height();
    std::error_code error;
    std::filesystem::rename(named, file, error);
    return isWhole && !error;
}
