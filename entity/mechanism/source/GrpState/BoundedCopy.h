#pragma once

#include <cstddef>

namespace mechanism_detail {

/// One block copy into a range of a state's buffer. A null end, or more values than the range holds, clears
/// the range and aborts with a line on standard error, as going on would compute with another state's values.
/// @param room number of values that the range holds. @param count number of values to copy; 0 copies
/// nothing.
void CopyBounded(double* to, std::size_t room, const double* from, std::size_t count);

} // namespace mechanism_detail
