#pragma once

#include "Vec.h"

#include <string>

namespace planning {

/// A joint axis at value zero.
struct Axis {
    Vec direction; ///< unit
    Vec point;
};

/// Checks that axes fit what a solver assumes.
class Fit {
public:
    /// @throws std::invalid_argument when the axes are not at right angles (parallel) within 0.01 rad.
    void RequireSquare(const Axis& a, const Axis& b, const char* names);
    void RequireParallel(const Axis& a, const Axis& b, const char* names);
    /// Point where two axes meet. @throws std::invalid_argument when they pass more than 1 mm apart.
    Vec RequireMeeting(const Axis& a, const Axis& b, const char* names);
    /// @throws std::invalid_argument when the distance is above 1 mm.
    void RequireNone(double distance, const std::string& what);
    /// Whether everything so far fits to rounding.
    bool Exact() const { return exact; }

private:
    void RequireAngle(double off, const std::string& what, const char* names);

    bool exact = true;
};

} // namespace planning
