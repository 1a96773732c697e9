#pragma once

#include <numbers>

/// Documents give angles in degrees, everything else computes in radians.
namespace Angles {

/// One degree, rad.
inline constexpr double RadiansPerDegree = std::numbers::pi / 180.0;
/// One radian, degrees.
inline constexpr double DegreesPerRadian = 180.0 / std::numbers::pi;

} // namespace Angles
