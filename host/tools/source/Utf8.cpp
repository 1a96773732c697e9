#include <host/tools/DataHandle.h>

#include <string_view>

namespace {

unsigned Byte(std::string_view text, std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
}

/// Range of the byte after a lead byte. It is narrower than that of other continuation bytes where these
/// would encode an overlong form, a surrogate or a number past the last code point.
bool IsSecondByte(unsigned lead, unsigned second) {
    const unsigned low = lead == 0xE0 ? 0xA0U : lead == 0xF0 ? 0x90U : 0x80U;
    const unsigned high = lead == 0xED ? 0x9FU : lead == 0xF4 ? 0x8FU : 0xBFU;
    return second >= low && second <= high;
}

/// Number of bytes of the valid sequence that starts at an index, 0 where none does.
std::size_t SequenceLength(std::string_view text, std::size_t at) {
    const unsigned lead = Byte(text, at);
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4 || !IsSecondByte(lead, Byte(text, at + 1))) {
        return 0;
    }
    const std::size_t length = lead < 0xE0 ? 2U : lead < 0xF0 ? 3U : 4U;
    for (std::size_t i = 2; i < length; ++i) {
        if ((Byte(text, at + i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    return length;
}

} // namespace

std::string DataHandle::StringToUTF8string(const std::string& text) {
    std::string utf8;
    utf8.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (const std::size_t length = SequenceLength(text, at)) {
            utf8.append(text, at, length);
            at += length;
        } else {
            const unsigned latin = Byte(text, at++);
            utf8 += static_cast<char>(0xC0U | (latin >> 6U));
            utf8 += static_cast<char>(0x80U | (latin & 0x3FU));
        }
    }
    return utf8;
}
