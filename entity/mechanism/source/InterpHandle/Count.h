#pragma once

#include "Format.h"
#include <algorithm>
#include <mechanism/InterpHandle.h>
#include <stdexcept>

namespace mechanism_detail {

/// Holds a count of samples to InterpHandle::MostSamples.
/// @throws std::invalid_argument for more.
inline void RequireCount(double count, const char* function) {
    if (count > InterpHandle::MostSamples) {
        throw std::invalid_argument(
            format("{}: {:.15g} samples, expected at most {}", function, count, InterpHandle::MostSamples));
    }
}

/// A number of samples cut towards zero; NaN and what is below zero are none.
/// @throws std::invalid_argument as RequireCount.
inline int Count(double number, const char* function) {
    RequireCount(number, function);
    return number > 0 ? static_cast<int>(number) : 0;
}

/// How often a step fits into a change; a step of zero asks for nothing.
inline double Quotient(double change, double step) { return step == 0 ? 0 : change / step; }

} // namespace mechanism_detail
