#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepLProp_SLProps.hxx>
#include <BRep_Tool.hxx>
#include <GCPnts_AbscissaPoint.hxx>
#include <GCPnts_UniformAbscissa.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <cell/model/ToolPathReader.h>
#include <cmath>

namespace cell {

namespace {

/// Normals that cancel each other to less than this have no mean.
constexpr double NoDirection = 1e-6;
/// Steps of a millionth of a path are a slip of the decimal point.
constexpr double MostPoses = 1e6;
constexpr double SameParameter = 1e-9;

/// Outward normal of a face where an edge of it is at a parameter; zero where the face has none.
gp_XYZ NormalAt(const TopoDS_Face& face, const TopoDS_Edge& edge, double parameter) {
    double first = 0;
    double last = 0;
    const opencascade::handle<Geom2d_Curve> curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (curve.IsNull()) {
        return {};
    }
    const gp_Pnt2d place = curve->Value(parameter);
    const BRepAdaptor_Surface surface(face);
    BRepLProp_SLProps properties(surface, place.X(), place.Y(), 1, SameParameter);
    if (!properties.IsNormalDefined()) {
        return {};
    }
    const gp_XYZ normal = properties.Normal().XYZ();
    return face.Orientation() == TopAbs_REVERSED ? normal.Reversed() : normal;
}

gp_XYZ MeanNormal(const TopTools_ListOfShape& faces, const TopoDS_Edge& edge, double parameter) {
    gp_XYZ sum;
    for (const TopoDS_Shape& face : faces) {
        sum += NormalAt(TopoDS::Face(face), edge, parameter);
    }
    if (sum.Modulus() < NoDirection && !faces.IsEmpty()) {
        sum = NormalAt(TopoDS::Face(faces.First()), edge, parameter);
    }
    return sum;
}

} // namespace

std::vector<ToolPose> PosesAlongEdge(const TopoDS_Shape& shape, int index, double spacing,
                                     const JsonNode& node) {
    TopTools_IndexedDataMapOfShapeListOfShape edges;
    TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, edges);
    if (index < 1 || index > edges.Extent()) {
        node.Refuse("the number of an edge, from 1 to " + std::to_string(edges.Extent()));
    }
    const TopoDS_Edge edge = TopoDS::Edge(edges.FindKey(index));
    if (BRep_Tool::Degenerated(edge)) {
        node.Refuse("an edge that has a length");
    }
    const BRepAdaptor_Curve curve(edge);
    if (GCPnts_AbscissaPoint::Length(curve) / spacing > MostPoses) {
        node.Refuse("a spacing that gives at most 1000000 poses");
    }
    const GCPnts_UniformAbscissa samples(
        curve, 1 + std::max(1, static_cast<int>(std::lround(GCPnts_AbscissaPoint::Length(curve) / spacing))));
    std::vector<ToolPose> poses;
    for (int i = 1; samples.IsDone() && i <= samples.NbPoints(); ++i) {
        const gp_Pnt point = curve.Value(samples.Parameter(i));
        const gp_XYZ normal = MeanNormal(edges.FindFromIndex(index), edge, samples.Parameter(i));
        if (normal.Modulus() < NoDirection) {
            node.Refuse("an edge with a face whose normal is known all along it");
        }
        const gp_XYZ tool = normal.Normalized().Reversed();
        poses.push_back({point.X(), point.Y(), point.Z(), tool.X(), tool.Y(), tool.Z()});
    }
    return poses;
}

} // namespace cell
