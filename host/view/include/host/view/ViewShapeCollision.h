#pragma once

#include <host/view/ViewShape.h>

/// Distances between view shapes at their placements in the world, by their triangle models.
///
/// A distance is exact for the triangles. On a curved face the triangles deviate from the surface by up to
/// 0.05 mm (less where the face came with a finer triangulation), and so may the distance.
namespace ViewShapeCollision {

/// Result of a distance query.
struct NearestPoint {
    bool within = false; ///< whether the distance is at most the tolerance
    double distance = 0; ///< mm; infinite where it exceeds the tolerance, where the search ends
};

/// Distance between two shapes, searched up to a tolerance (mm). A distance that exceeds the tolerance by
/// less than 1e-9 mm, the rounding of metres, counts as the tolerance.
/// @param mode 0 stops at the first pair of triangles within the tolerance and returns its distance; any
/// other value returns the least distance.
/// @throws std::invalid_argument for a null shape, or one without faces or points.
NearestPoint CalcPQPToleranceNereastPnt(const opencascade::handle<ViewShape>& a,
                                        const opencascade::handle<ViewShape>& b, double tolerance, int mode);

} // namespace ViewShapeCollision
