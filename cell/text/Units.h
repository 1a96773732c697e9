#pragma once

#include <host/tools/Angles.h>

/// Units of files and reports, beside rad and mm inside: one place for all of them.
namespace cell {

using Angles::RadiansPerDegree;

} // namespace cell
