#pragma once

#include <TopoDS_Compound.hxx>
#include <cell/documents/Frames.h>
#include <gp_Ax2.hxx>
#include <gp_Dir.hxx>
#include <gp_Pnt.hxx>

namespace cell {

gp_Pnt Point(const Vec& t);
gp_Dir Direction(const Vec& t);

/// A cylinder with bevelled rims, centred on a point.
TopoDS_Shape Drum(const gp_Pnt& centre, const gp_Dir& axis, double radius, double halfLength);
/// A tube from a to b that narrows (or widens) on the way; the points must differ.
TopoDS_Shape Tube(const gp_Pnt& a, const gp_Pnt& b, double radiusA, double radiusB);
/// A box between two opposite corners given in a frame.
TopoDS_Shape Block(const gp_Ax2& frame, const gp_XYZ& low, const gp_XYZ& high);
TopoDS_Shape Ball(const gp_Pnt& centre, double radius);

/// Solids that are displayed as one shape.
class Assembly {
public:
    Assembly();
    void Add(const TopoDS_Shape& shape);
    bool IsEmpty() const { return count == 0; }
    const TopoDS_Compound& Shape() const { return compound; }

private:
    TopoDS_Compound compound;
    int count = 0;
};

} // namespace cell
