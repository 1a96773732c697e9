#pragma once

#include <BVH_BoxSet.hxx>
#include <cstddef>

class TopoDS_Shape;

/// The triangles of a shape in a tree of boxes, for distance queries. Millimetres, in the shape's own frame
/// (its location included).
class TriangleModel {
public:
    using Point = BVH_Vec3d;
    struct Triangle {
        Point a, b, c;
    };
    using Tree = BVH_BoxSet<double, 3, Triangle>;

    /// Takes the triangulation that the shape carries; a face without one, or with one coarser than the
    /// deflection (mm), is triangulated first; of a shape larger than the deflection's hundred
    /// thousandfold, its hundred thousandth counts. A vertex that stands alone is a point of the model. A
    /// shape with neither gives an empty model.
    TriangleModel(const TopoDS_Shape& shape, double deflection);

    std::size_t Size() const { return static_cast<std::size_t>(tree.Size()); }
    bool IsSinglePoint() const { return singlePoint; }
    const Tree& GetTree() const { return tree; }

private:
    Tree tree;
    bool singlePoint = false;
};
