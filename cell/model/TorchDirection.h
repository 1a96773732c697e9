#pragma once

#include <BRepClass3d_SolidClassifier.hxx>
#include <TopoDS_Face.hxx>
#include <cell/model/EdgeChain.h>
#include <list>

namespace cell {

/// Where a torch is to point along edges: against the bisector of what is open there. At an edge of one solid
/// that is the mean of its faces' normals; where the shape has several solids, which may touch, the space
/// around the edge is looked at.
class TorchDirection {
public:
    /// @param item may ask under "torch" for an angle from a face: {"face_near_mm", "angle_deg"}.
    TorchDirection(const TopoDS_Shape& shape, const EdgeChain& chain_, const JsonNode& item);

    /// Unit direction of the tool at a place. @throws InputError where nothing is open.
    gp_XYZ At(const EdgeChain::Place& place);

private:
    std::optional<gp_XYZ> MeanNormal(const EdgeChain::Place& place) const;
    gp_XYZ OpenBisector(const EdgeChain::Place& place);
    bool IsOpen(const gp_Pnt& point);
    gp_XYZ FromFace(const EdgeChain::Place& place, const gp_XYZ& open) const;

    const EdgeChain& chain;
    JsonNode node;
    std::list<BRepClass3d_SolidClassifier> solids; ///< not to be moved
    TopoDS_Face face;                              ///< that the angle is counted from; may be null
    double angle = 0;
};

} // namespace cell
