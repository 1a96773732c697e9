#pragma once

#include <cstddef>

namespace mechanism_detail {

/// One block copy into a range of a state's buffer.
/// @param room the values that the range holds. @param count the values to copy.
/// A missing end or more values than there is room for, with any to copy, clears the range and aborts with a
/// line on standard error: to go on would compute with another state's values.
void CopyBounded(double* to, std::size_t room, const double* from, std::size_t count);

} // namespace mechanism_detail
