#pragma once

#include <numbers>

/// Units of files and reports, beside rad and mm inside: one place for all of them.
namespace cell {

inline constexpr double RadiansPerDegree = std::numbers::pi / 180.0;

} // namespace cell
