#include <host/view/TriangleModel.h>

#include <BRepBndLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <cmath>

namespace {

constexpr double MeshAngle = 0.35;
/// Least deflection as a fraction of a shape's size: finer triangles of very large shapes would fill memory.
constexpr double FinestShare = 1e-5;

void Mesh(const TopoDS_Face& face, double deflection) {
    TopLoc_Location location;
    const auto present = BRep_Tool::Triangulation(face, location);
    if (present.IsNull() || present->Deflection() > deflection) {
        BRepMesh_IncrementalMesh(face, deflection, Standard_False, MeshAngle);
    }
}

TriangleModel::Point ToPoint(const gp_Pnt& p) { return TriangleModel::Point(p.X(), p.Y(), p.Z()); }

void Add(const TriangleModel::Triangle& triangle, TriangleModel::Tree& tree) {
    BVH_Box<double, 3> box(triangle.a);
    box.Add(triangle.b);
    box.Add(triangle.c);
    tree.Add(triangle, box);
}

void AddFace(const TopoDS_Face& face, TriangleModel::Tree& tree) {
    TopLoc_Location location;
    const auto mesh = BRep_Tool::Triangulation(face, location);
    if (mesh.IsNull()) {
        return;
    }
    const gp_Trsf& place = location.Transformation();
    const auto node = [&](int n) { return ToPoint(mesh->Node(n).Transformed(place)); };
    for (int i = 1; i <= mesh->NbTriangles(); ++i) {
        int n1 = 0;
        int n2 = 0;
        int n3 = 0;
        mesh->Triangle(i).Get(n1, n2, n3);
        Add({node(n1), node(n2), node(n3)}, tree);
    }
}

} // namespace

TriangleModel::TriangleModel(const TopoDS_Shape& shape, double deflection) {
    if (shape.IsNull()) {
        return;
    }
    Bnd_Box bounds;
    BRepBndLib::Add(shape, bounds);
    if (!bounds.IsVoid() && !bounds.IsOpen()) {
        deflection = std::max(deflection, FinestShare * std::sqrt(bounds.SquareExtent()));
    }
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        const TopoDS_Face& face = TopoDS::Face(faces.Current());
        Mesh(face, deflection);
        AddFace(face, tree);
    }
    for (TopExp_Explorer vertices(shape, TopAbs_VERTEX, TopAbs_EDGE); vertices.More(); vertices.Next()) {
        const Point point = ToPoint(BRep_Tool::Pnt(TopoDS::Vertex(vertices.Current())));
        Add({point, point, point}, tree);
        singlePoint = tree.Size() == 1;
    }
    tree.Build();
}
