#pragma once

#include "Raster.h"

#include <vector>

namespace WorkSpace {

/// Closed without repeating its first point.
using Polygon = std::vector<SectionPoint>;

/// Outer boundary of the largest connected part of the marked cells, counter-clockwise, through the middles
/// of the cells' edges.
Polygon TraceBoundary(const Raster& raster);

/// A polygon with fewer points, each of them within the tolerance (mm) of the given one, still simple.
Polygon Simplified(const Polygon& polygon, double tolerance);

/// Whether no two edges intersect, except neighbours at their common point.
bool IsSimple(const Polygon& polygon);

/// Area inside, positive for counter-clockwise, square millimetres.
double SignedArea(const Polygon& polygon);

} // namespace WorkSpace
