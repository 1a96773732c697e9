#pragma once

#include <array>
#include <cstdint>
#include <host/tools/Angles.h>
#include <limits>
#include <numbers>
#include <planning/Export.h>
#include <vector>

// What a tool is to follow on a workpiece, and what may be chosen on the way.

namespace planning {

/// One degree, rad.
inline constexpr double DegreeInRadians = Angles::RadiansPerDegree;

/// A place of a seam, in the frame of the work.
struct SeamPose {
    std::array<double, 3> point; ///< mm
    std::array<double, 3> tool;  ///< unit; the tool centre's Z, out of the tool
    /// Unit; what is to look up for a weld that lies flat. Zeros: against `tool`.
    std::array<double, 3> up = {};
    /// Whether the tool may leave the seam here and come back in another configuration.
    bool mayChange = false;
};

/// A number that is nominally so much and may be up to `below` less and `above` more; candidates are `step`
/// apart. rad, or mm for lengths.
struct Tolerance {
    double nominal = 0;                ///< what is wanted
    double below = 0;                  ///< allowed deviation downwards, 0 or more
    double above = 0;                  ///< allowed deviation upwards, 0 or more
    double step = 5 * DegreeInRadians; ///< distance of candidates, above 0
};

/// What an axis of a rail or positioner may do along a seam.
struct AxisFreedom {
    /// How the axis moves along the seam.
    enum class Kind : std::uint8_t {
        Fixed,   ///< stands at `from`
        Linear,  ///< goes evenly along the seam from `from` to `to`
        Free,    ///< anything within `low` to `high`
        Downhand ///< within `low` to `high`, so that the seam's up direction is near the vertical
    };
    Kind kind = Kind::Fixed; ///< how it moves
    double from = 0;         ///< value of Fixed, first value of Linear; rad or mm
    double to = 0;           ///< last value of Linear; rad or mm
    /// Bounds of Free and Downhand; the limits of the axis bound them as well.
    double low = -std::numeric_limits<double>::infinity();
    /// Upper bound, as `low`.
    double high = std::numeric_limits<double>::infinity();
    /// Distance of candidates; 0: 10 degrees, or 50 mm for an axis that slides.
    double step = 0;
};

/// Everything that may be chosen at the poses of a seam. Angles are counted in the frame of a pose: Z along
/// the tool, X along the seam as far as it is square to Z. Tilts are made first (work angle about X, then
/// lead about Y), then the tool spins about its own axis, then stands back.
struct SeamFreedom {
    /// About the tool's axis from the direction of travel, any by default. Without tolerance the tool keeps
    /// this turn from the travel; a tolerance of half a turn each way frees it altogether.
    Tolerance spin = {0, std::numbers::pi, std::numbers::pi};
    Tolerance lead; ///< positive: the tool points ahead (pushes)
    Tolerance work; ///< positive: the tool points to the left of the travel, seen along the tool
    Tolerance stickOut = {0, 0, 0, 1}; ///< mm that the tool centre stands back from the seam, along the tool
    std::vector<AxisFreedom> carrier;  ///< one an axis of what carries the arm; empty: all fixed at 0
    std::vector<AxisFreedom> holder;   ///< one an axis of what holds the work; empty: all fixed at 0
    double downhand = 15 * DegreeInRadians; ///< largest angle of the up direction to the vertical, rad

    /// A torch: any spin, lead and work angle within 5 degrees; angles cost, so they stay steady.
    PLANNING_EXPORT static SeamFreedom Welding();
    /// A spray gun: any spin in steps of 10 degrees, lead and work angle within 10 degrees.
    PLANNING_EXPORT static SeamFreedom Painting();
};

/// What the search makes small; docs/design/seams.md says why the numbers are what they are. The cost of a
/// way is the integral over its length of: the squares of the axes' motions per length, and of what is said
/// below of places.
struct SeamCosts {
    double length = 100;                       ///< mm over which costs of places add up to themselves
    double arm = 1;                            ///< of a joint's motion, rad
    double carrier = 3;                        ///< of a carrier's axis, rad
    double holder = 3;                         ///< of a holder's axis, rad
    double sliding = 1.0 / 400;                ///< of an axis that slides: as so many rad a mm
    double limit = 2;                          ///< at the limit of a joint, falling to 0 at the margin
    double limitMargin = 30 * DegreeInRadians; ///< rad; of axes that slide 150 mm
    double singular = 5;                       ///< in a singularity, falling to 0 at the margin
    double singularMargin = 0.05;              ///< of the manipulability, lengths in units of the reach
    double tilt = 20;                          ///< of lead and work angle off the nominal, squared rad
    double stickOut = 0.02;                    ///< of the stick-out off the nominal, squared mm
    double downhand = 1;                       ///< of the up direction off the vertical, squared rad
    double change = 10;                        ///< of a change of configuration at a marked place
    double start = 0.5;                        ///< of the way through the air to the seam, squared rad
};

/// A seam of a workpiece, what may be chosen along it, and how the tool comes to it and leaves it.
struct Seam {
    std::vector<SeamPose> poses; ///< a last one on the first makes it closed
    SeamFreedom freedom;         ///< what may be chosen at its poses
    double approach = 0;         ///< length of the straight way to the seam along the tool, mm
    double retract = 0;          ///< and from it
};

} // namespace planning
