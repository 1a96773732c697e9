#pragma once

#include <gp_Pnt.hxx>

class Bnd_OBB;
class TopoDS_Face;
class TopoDS_Shape;

/// Properties of shapes. Lengths in millimetres.
namespace ShapeHandle {

/// The box as a closed solid. A null shape for a box that is void or has no thickness in some direction.
TopoDS_Shape BndOBBGetTopoShape(const Bnd_OBB& box);
/// Whether a shape is usable: not null, not empty and valid.
bool CheckTopoDS(const TopoDS_Shape& shape);
/// Volume of a shape that has solids, else the area of its faces; 0 for a null shape.
double GetAreaOrVol(const TopoDS_Shape& shape);
/// Centre of mass of a face.
gp_Pnt GetFaceCenter(const TopoDS_Face& face);

} // namespace ShapeHandle
