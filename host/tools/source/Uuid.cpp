#include <host/tools/Uuid.h>

#include <stdexcept>
#include <uuid/uuid.h>

namespace {

constexpr std::size_t TextLength = 36;

std::string Unparse(const std::array<std::uint8_t, 16>& value) {
    std::array<char, TextLength + 1> buffer{};
    uuid_unparse_lower(value.data(), buffer.data());
    return {buffer.data(), TextLength};
}

} // namespace

Uuid Uuid::CreateUuid() {
    Uuid id;
    uuid_generate_random(id.value.data());
    id.text = Unparse(id.value);
    return id;
}

Uuid Uuid::FromString(std::string text) {
    Uuid id;
    if (text.empty()) {
        return id;
    }
    // uuid_parse reads up to a null character, so a longer text that contains one needs the length check.
    if (text.size() != TextLength || uuid_parse(text.c_str(), id.value.data()) != 0) {
        throw std::invalid_argument("\"" + text + "\" is not an identifier");
    }
    id.text = Unparse(id.value);
    return id;
}

std::string Uuid::ToString() const {
    const bool isNil = value == decltype(value){};
    return text.empty() && !isNil ? Unparse(value) : text;
}
