#pragma once

#include <host/view/ViewShape.h>

/// Distances between view shapes where they stand, over their triangle models.
///
/// A distance is exact for the triangles. On a curved face these leave the surface by up to 0.05 mm (unless
/// the face came with a finer triangulation), so a distance to it is right to that much.
namespace ViewShapeCollision {

struct NearestPoint {
    bool within = false; ///< whether the shapes come as near as the tolerance
    double distance = 0; ///< mm; infinite where they do not, as the search ends at the tolerance
};

/// Distance between two shapes, looked for up to a tolerance (mm). A distance that exceeds the tolerance by
/// less than 1e-9, the rounding of metres, is the tolerance.
/// @param mode 0 stops at the first part within the tolerance and answers its distance; any other value
/// answers the least one.
/// @throws std::invalid_argument for a null shape, or one without faces or points.
NearestPoint CalcPQPToleranceNereastPnt(const opencascade::handle<ViewShape>& a,
                                        const opencascade::handle<ViewShape>& b, double tolerance, int mode);

} // namespace ViewShapeCollision
