#include "BoundedCopy.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

void mechanism_detail::CopyBounded(double* to, std::size_t room, const double* from, std::size_t count) {
    if (count == 0) {
        return;
    }
    if (to != nullptr && from != nullptr && count <= room) {
        std::copy_n(from, count, to);
        return;
    }
    if (to != nullptr) {
        std::fill_n(to, room, 0.0);
    }
    std::fprintf(stderr, "mechanism: GrpState: cannot copy %zu values from %s into room for %zu\n", count,
                 from == nullptr ? "nowhere" : "a buffer", to == nullptr ? 0 : room);
    std::abort();
}
