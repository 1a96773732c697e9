#pragma once

#include "Format.h"
#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>

namespace mechanism_detail {

/// A number of samples, rounded towards zero; 0 for NaN and for negative numbers.
/// @throws std::invalid_argument where it is larger than an int.
inline int Count(double number, const char* function) {
    constexpr int Most = std::numeric_limits<int>::max();
    if (number > Most) {
        throw std::invalid_argument(format("{}: {} samples, expected at most {}", function, number, Most));
    }
    return number > 0 ? static_cast<int>(number) : 0;
}

/// Allocates the memory of a whole result and releases it at once, so that an oversized result is refused
/// before it is built element by element and fills the machine's memory.
/// @param bytes of one element, including what it allocates.
/// @throws std::bad_alloc.
inline void RequireMemory(double count, std::size_t bytes) {
    constexpr double Unquestioned = 64e6;
    const double total = count * static_cast<double>(bytes);
    if (total > Unquestioned) {
        constexpr double Most = 1e18; // still a size_t
        // Called by name: the compiler may omit a new expression whose memory is not used.
        ::operator delete(::operator new(static_cast<std::size_t>(total < Most ? total : Most)));
    }
}

/// Number of steps in a change; 0 for a step of zero.
inline double Quotient(double change, double step) { return step == 0 ? 0 : change / step; }

} // namespace mechanism_detail
