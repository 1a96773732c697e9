#pragma once

#include "Format.h"
#include <cstdint>
#include <limits>
#include <stdexcept>

namespace mechanism_detail {

/// A count that is stored as a double, rounded towards zero.
/// @throws std::invalid_argument naming it where it is not a 32-bit number.
inline std::int32_t Whole(double count, const char* name) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (!(count > Limits::min() - 1.0 && count < Limits::max() + 1.0)) {
        throw std::invalid_argument(format("{}: {}, expected a 32-bit number", name, count));
    }
    return static_cast<std::int32_t>(count);
}

} // namespace mechanism_detail
