#pragma once

#include <version>

#ifdef __cpp_lib_format
#include <format>
#else
#include <fmt/format.h>
#endif

namespace mechanism_detail {

/// Message templates with "{}". Both providers share one grammar; {fmt} serves where the standard library
/// has no std::format yet.
#ifdef __cpp_lib_format
using std::format;
#else
using fmt::format;
#endif

} // namespace mechanism_detail
