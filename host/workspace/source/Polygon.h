#pragma once

#include "Raster.h"

#include <vector>

namespace WorkSpace {

/// Closed without repeating its first point.
using Polygon = std::vector<SectionPoint>;

/// Outer boundary of the largest connected part of the marked cells, counter-clockwise, through the middles
/// of the cells' edges.
Polygon TraceBoundary(const Raster& raster);

/// The polygon with fewer points, none of its own farther than the tolerance (mm) from it, still simple.
Polygon Simplified(const Polygon& polygon, double tolerance);

/// Whether no two edges meet but neighbours at their common point.
bool IsSimple(const Polygon& polygon);

/// Area inside, positive for counter-clockwise, square millimetres.
double SignedArea(const Polygon& polygon);

} // namespace WorkSpace
