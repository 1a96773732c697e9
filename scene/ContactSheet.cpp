#include <algorithm>
#include <cstring>
#include <scene/ContactSheet.h>

namespace cell {

namespace {

constexpr int MostColumns = 3;

} // namespace

ContactSheet::ContactSheet(int count, int width_, int height_)
    : columns(std::min(count, MostColumns)), width(static_cast<Standard_Size>(width_)),
      height(static_cast<Standard_Size>(height_)) {
    const int rows = (count + columns - 1) / columns;
    sheet.InitZero(Image_Format_RGB, width * static_cast<Standard_Size>(columns),
                   height * static_cast<Standard_Size>(rows), 0, 0xFF);
}

bool ContactSheet::Add(const Image_AlienPixMap& picture) {
    if (picture.Width() != width || picture.Height() != height || picture.Format() != sheet.Format()) {
        return false;
    }
    const std::size_t column = added % static_cast<std::size_t>(columns);
    const std::size_t row = added / static_cast<std::size_t>(columns);
    const std::size_t bytes = width * sheet.SizePixelBytes();
    for (std::size_t line = 0; line < height; ++line) {
        std::memcpy(sheet.ChangeRow(row * height + line) + column * bytes, picture.Row(line), bytes);
    }
    ++added;
    return true;
}

} // namespace cell
