#pragma once

#include <cell/plan/Reach.h>
#include <string>

namespace cell {

/// An SVG drawing of what a robot reaches, radius to the right and height up, in the robot's own frame with
/// axes in millimetres, and of the robot itself as it stands now, seen from the side.
std::string SectionPlot(const Reach& reach);

} // namespace cell
