#include <algorithm>
#include <cell/InputError.h>
#include <host/tools/DataHandle.h>

namespace {

/// Longer values are cut in messages, so that the expectation stays visible.
constexpr std::size_t LongestValue = 80;

std::string OneLine(std::string text) {
    text = DataHandle::StringToUTF8string(text);
    const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7f; };
    std::replace_if(text.begin(), text.end(), isControl, ' ');
    return text;
}

bool ContinuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

std::string Shortened(std::string text) {
    if (text.size() <= LongestValue) {
        return text;
    }
    std::size_t end = LongestValue;
    while (end > 0 && ContinuesCharacter(text[end])) {
        --end;
    }
    return text.substr(0, end) + "...";
}

std::string Where(const std::string& file, const std::string& key) {
    return key.empty() ? file + ": " : file + ": " + key + ": ";
}

} // namespace

cell::InputError::InputError(const std::string& line) : std::runtime_error(OneLine(line)) {}

cell::InputError::InputError(const std::string& file, const std::string& key, const std::string& value,
                             const std::string& expected)
    : InputError(Where(file, key) + Shortened(value) + ", expected " + expected) {}
