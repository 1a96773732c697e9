#pragma once

#include <array>
#include <charconv>
#include <string>

/// Numbers in texts.
namespace TextHandle {

/// The shortest text that reads back to the same number, whatever the user's locale.
inline std::string Shortest(double number) {
    std::array<char, 32> text;
    char* const end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

} // namespace TextHandle
