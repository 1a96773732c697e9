#pragma once

#include <BVH_BoxSet.hxx>
#include <cstddef>

class TopoDS_Shape;

/// The triangles of a shape in a tree of boxes, for distance queries. Millimetres, in the shape's own frame
/// (its location included).
class TriangleModel {
public:
    /// A corner: x, y, z in mm.
    using Point = BVH_Vec3d;
    /// The three corners of a triangle, mm.
    struct Triangle {
        Point a; ///< first corner
        Point b; ///< second corner
        Point c; ///< third corner
    };
    /// The tree of boxes over the triangles.
    using Tree = BVH_BoxSet<double, 3, Triangle>;

    /// Uses the triangulation that the shape carries. A face without one, or with one coarser than the
    /// deflection, is triangulated first; an isolated vertex becomes a point of the model. A shape with
    /// neither gives an empty model.
    /// @param deflection mm; at least 1e-5 of the shape's size is used.
    TriangleModel(const TopoDS_Shape& shape, double deflection);

    /// Number of triangles, a single point counted as one.
    std::size_t Size() const { return static_cast<std::size_t>(tree.Size()); }
    /// Whether the model is one point without extent.
    bool IsSinglePoint() const { return singlePoint; }
    /// The tree, for traversal.
    const Tree& GetTree() const { return tree; }

private:
    Tree tree;
    bool singlePoint = false;
};
