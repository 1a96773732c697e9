#include <host/tools/Uuid.h>

#include <atomic>
#include <chrono>
#include <stdexcept>

// Identifiers of the process's start and a running number (RFC 9562, version 8), in place of random ones.

namespace {

constexpr const char* Digits = "0123456789abcdef";
constexpr std::size_t TextLength = 36;

bool HasDashBefore(std::size_t byte) { return byte == 4 || byte == 6 || byte == 8 || byte == 10; }

std::string TextOf(const std::array<std::uint8_t, 16>& value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        text += HasDashBefore(i) ? "-" : "";
        text += Digits[value[i] / 16];
        text += Digits[value[i] % 16];
    }
    return text;
}

std::uint8_t DigitOf(char c, const std::string& text) {
    const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    const std::size_t digit = std::string(Digits).find(lower);
    if (digit == std::string::npos) {
        throw std::invalid_argument("\"" + text + "\" is not an identifier");
    }
    return static_cast<std::uint8_t>(digit);
}

} // namespace

Uuid Uuid::CreateUuid() {
    static const auto start =
        static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
    static std::atomic<std::uint64_t> last{0};
    const std::uint64_t number = ++last;
    Uuid id;
    for (std::size_t i = 0; i < 8; ++i) {
        id.value[i] = static_cast<std::uint8_t>(start >> (8 * i));
        id.value[8 + i] = static_cast<std::uint8_t>(number >> (8 * (7 - i)));
    }
    id.value[6] = static_cast<std::uint8_t>(0x80 | (id.value[6] & 0x0F));
    id.value[8] = static_cast<std::uint8_t>(0x80 | (id.value[8] & 0x3F));
    id.text = TextOf(id.value);
    return id;
}

Uuid Uuid::FromString(std::string text) {
    Uuid id;
    if (text.empty()) {
        return id;
    }
    std::size_t at = 0;
    for (std::size_t i = 0; i < id.value.size() && text.size() == TextLength; ++i) {
        if (HasDashBefore(i) && text[at] == '-') {
            ++at;
        }
        id.value[i] = static_cast<std::uint8_t>(16 * DigitOf(text[at], text) + DigitOf(text[at + 1], text));
        at += 2;
    }
    if (at != TextLength) {
        throw std::invalid_argument("\"" + text + "\" is not an identifier");
    }
    id.text = TextOf(id.value);
    return id;
}

std::string Uuid::ToString() const { return text.empty() && *this != Uuid() ? TextOf(value) : text; }
