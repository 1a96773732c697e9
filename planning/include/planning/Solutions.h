#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <planning/Export.h>

namespace planning {

/// Most joints of an arm: seven with a coupled wrist.
inline constexpr std::size_t MaxJoints = 7;
/// Most solutions of one pose, whole turns not counted: 8, or 16 with a coupled wrist.
inline constexpr std::size_t MaxSolutions = 16;

/// Front: the wrist centre lies on that side of axis 1 to which the arm leans at joint values zero.
enum class Shoulder : std::uint8_t { Front, Back };
/// Up: the elbow lies above the line from joint 2 to the wrist centre (below it with the shoulder back and
/// the wrist on the far side of joint 2, so that the word changes at the stretched arm alone).
enum class Elbow : std::uint8_t { Up, Down };
/// No-flip: the wrist bends towards positive turns of joint 2, with joint 4 counted from zero.
enum class Wrist : std::uint8_t { NoFlip, Flip };

/// The shape of an arm. Along a motion that meets no singularity no word changes; with a coupled wrist,
/// whose singularities lie elsewhere, the words name the same geometry without that promise.
struct Configuration {
    Shoulder shoulder; ///< front or back
    Elbow elbow;       ///< up or down
    Wrist wrist;       ///< no-flip or flip

    /// Equal when all three words are.
    bool operator==(const Configuration&) const = default;
};

PLANNING_EXPORT const char* Name(Shoulder shoulder); ///< "front", "back"
PLANNING_EXPORT const char* Name(Elbow elbow);       ///< "up", "down"
PLANNING_EXPORT const char* Name(Wrist wrist);       ///< "no-flip", "flip"

/// Bits of Solution::singular: which singularities are nearer than 1e-4 (sine of the angle; for the shoulder,
/// the distance of the wrist centre from axis 1 in units of the reach).
enum Singular : std::uint8_t { NotSingular = 0, ShoulderSingular = 1, ElbowSingular = 2, WristSingular = 4 };

/// Joint values of one arm shape.
struct Solution {
    std::array<double, MaxJoints> values; ///< rad, one a joint; past the last joint not set
    Configuration configuration;          ///< the shape that they give
    std::uint8_t singular;                ///< bits of Singular
    /// Smallest singular value of the Jacobian, lengths in units of the arm's reach; computed where
    /// `singular` is set, infinity elsewhere.
    double smallestSingularValue;
};

/// Result of a solve.
enum class Outcome : std::uint8_t {
    Solved,       ///< there are solutions
    OutOfReach,   ///< no joint values give the pose, limits aside
    OutsideLimits ///< some do, none within the limits
};

/// The solutions of one pose, in a fixed order: shoulder front to back, elbow up to down, wrist no-flip to
/// flip.
class Solutions {
public:
    /// First solution.
    const Solution* begin() const { return items.data(); }
    /// One past the last solution.
    const Solution* end() const { return items.data() + count; }
    /// Number of solutions.
    std::size_t size() const { return count; }
    /// Whether there are none; `outcome` says why.
    bool empty() const { return count == 0; }
    /// Solution by index, which must be below size().
    const Solution& operator[](std::size_t i) const { return items[i]; }

    /// Why there are none, where there are none.
    Outcome outcome = Outcome::OutOfReach;
    /// Out of reach: by how much the nearest shape misses (mm). 0 otherwise.
    double excess = std::numeric_limits<double>::infinity();

    /// Adds a solution; must not be called when Full().
    void Append(const Solution& solution) { items[count++] = solution; }
    /// Whether there is no room for another solution.
    bool Full() const { return count == items.size(); }

private:
    std::size_t count = 0;
    std::array<Solution, MaxSolutions> items;
};

} // namespace planning
