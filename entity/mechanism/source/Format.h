#pragma once

#include <version>

#ifdef __cpp_lib_format
#include <format>
#else
#include <array>
#include <charconv>
#include <fmt/format.h>
#include <string>
#include <type_traits>
#endif

namespace mechanism_detail {

/// Message templates with "{}", filled as std::format does. Where the standard library has no std::format,
/// {fmt} is used, which has the same grammar but writes some numbers differently (0.0005 for 5e-04): numbers
/// are therefore written by std::to_chars, which defines std::format's output.
#ifdef __cpp_lib_format
using std::format;
#else
template <class T>
decltype(auto) Printed(const T& value) {
    if constexpr (std::is_floating_point_v<T>) {
        std::array<char, 64> text;
        return std::string(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
    } else {
        return (value);
    }
}

template <class... Values>
std::string format(fmt::format_string<decltype(Printed(std::declval<const Values&>()))...> text,
                   const Values&... values) {
    return fmt::format(text, Printed(values)...);
}
#endif

} // namespace mechanism_detail
