#include <cell/Picture.h>

// The encoder below Image_AlienPixMap does not ask whether its writes arrived: only reading back tells.
bool cell::SavePicture(Image_AlienPixMap& picture, const std::filesystem::path& file) {
    const std::string name = file.string();
    Image_AlienPixMap written;
    return !picture.IsEmpty() && picture.Save(name.c_str()) && written.Load(name.c_str()) &&
           written.Width() == picture.Width() && written.Height() == picture.Height();
}
