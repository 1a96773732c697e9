#pragma once

#include <limits>

namespace mechanism_detail {

/// A number cut towards zero; what does not fit, NaN and infinities answer the least integer, which no count
/// ever wants, instead of undefined behaviour.
inline int Truncated(double number) {
    using Limits = std::numeric_limits<int>;
    const bool fits = number > Limits::min() - 1.0 && number < Limits::max() + 1.0;
    return fits ? static_cast<int>(number) : Limits::min();
}

} // namespace mechanism_detail
