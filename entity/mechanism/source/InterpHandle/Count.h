#pragma once

#include "Format.h"
#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>

namespace mechanism_detail {

/// A number of samples cut towards zero; NaN and what is below zero are none.
/// @throws std::invalid_argument where an int cannot count them.
inline int Count(double number, const char* function) {
    constexpr int Most = std::numeric_limits<int>::max();
    if (number > Most) {
        throw std::invalid_argument(format("{}: {} samples, expected at most {}", function, number, Most));
    }
    return number > 0 ? static_cast<int>(number) : 0;
}

/// Asks for the memory of a whole result and gives it back at once. Results that are built element by element
/// would otherwise use up the machine before an allocation is refused.
/// @param bytes of one element, what it allocates included.
/// @throws std::bad_alloc.
inline void RequireMemory(double count, std::size_t bytes) {
    constexpr double Unquestioned = 64e6;
    const double total = count * static_cast<double>(bytes);
    if (total > Unquestioned) {
        constexpr double Most = 1e18; // still a size_t
        // Called by name: a new expression whose memory nobody uses may be left out by the compiler.
        ::operator delete(::operator new(static_cast<std::size_t>(total < Most ? total : Most)));
    }
}

/// How often a step fits into a change; a step of zero asks for nothing.
inline double Quotient(double change, double step) { return step == 0 ? 0 : change / step; }

} // namespace mechanism_detail
