#include <BRepAdaptor_Surface.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepLProp_SLProps.hxx>
#include <BRep_Tool.hxx>
#include <GeomAPI_ProjectPointOnSurf.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <cell/model/TorchDirection.h>
#include <cell/text/Units.h>
#include <cmath>
#include <gp_Ax2.hxx>

namespace cell {

namespace {

/// A sum of normals shorter than this has no direction.
constexpr double NoDirection = 1e-6;
constexpr double SameParameter = 1e-9;
/// Sampling of the space around an edge: distance from it (mm), number of directions, number of bisections.
constexpr double Around = 0.05;
constexpr int Directions = 72;
constexpr int Halvings = 14;
constexpr double Turn = 2 * std::numbers::pi;

gp_XYZ Outward(const TopoDS_Face& face, double u, double v) {
    const BRepAdaptor_Surface surface(face);
    BRepLProp_SLProps properties(surface, u, v, 1, SameParameter);
    if (!properties.IsNormalDefined()) {
        return {};
    }
    const gp_XYZ normal = properties.Normal().XYZ();
    return face.Orientation() == TopAbs_REVERSED ? normal.Reversed() : normal;
}

/// Outward normal of a face where an edge of it is at a parameter; zero where the face has none.
gp_XYZ NormalAt(const TopoDS_Face& face, const TopoDS_Edge& edge, double parameter) {
    double first = 0;
    double last = 0;
    const opencascade::handle<Geom2d_Curve> curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (curve.IsNull()) {
        return {};
    }
    const gp_Pnt2d place = curve->Value(parameter);
    return Outward(face, place.X(), place.Y());
}

TopoDS_Face NearestFace(const TopoDS_Shape& shape, const spatial::Vec& p) {
    const TopoDS_Shape vertex = BRepBuilderAPI_MakeVertex(gp_Pnt(p[0], p[1], p[2])).Shape();
    TopoDS_Face nearest;
    double least = RealLast();
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        const BRepExtrema_DistShapeShape distance(faces.Current(), vertex);
        if (distance.IsDone() && distance.Value() < least) {
            least = distance.Value();
            nearest = TopoDS::Face(faces.Current());
        }
    }
    return nearest;
}

} // namespace

TorchDirection::TorchDirection(const TopoDS_Shape& shape, const EdgeChain& chain_, const JsonNode& item)
    : chain(chain_), node(item.Find("edges") ? item.At("edges") : item.At("edge")) {
    int count = 0;
    for (TopExp_Explorer all(shape, TopAbs_SOLID); all.More(); all.Next()) {
        ++count;
    }
    for (TopExp_Explorer all(shape, TopAbs_SOLID); count > 1 && all.More(); all.Next()) {
        solids.emplace_back(all.Current());
    }
    if (const auto torch = item.Find("torch")) {
        torch->OnlyKeys({"face_near_mm", "angle_deg"});
        const double degrees = torch->At("angle_deg").Number();
        if (!(degrees > 0 && degrees < 180)) {
            torch->At("angle_deg").Refuse("degrees between 0 and 180");
        }
        angle = degrees * RadiansPerDegree;
        face = NearestFace(shape, torch->At("face_near_mm").Position());
    }
}

std::optional<gp_XYZ> TorchDirection::MeanNormal(const EdgeChain::Place& place) const {
    const TopTools_ListOfShape& faces = chain.FacesAt(place.edge);
    gp_XYZ sum;
    for (const TopoDS_Shape& beside : faces) {
        sum += NormalAt(TopoDS::Face(beside), place.edge, place.parameter);
    }
    if (sum.Modulus() < NoDirection && !faces.IsEmpty()) {
        sum = NormalAt(TopoDS::Face(faces.First()), place.edge, place.parameter);
    }
    return sum.Modulus() < NoDirection ? std::nullopt : std::optional(sum.Normalized());
}

bool TorchDirection::IsOpen(const gp_Pnt& point) {
    for (BRepClass3d_SolidClassifier& solid : solids) {
        solid.Perform(point, SameParameter);
        if (solid.State() != TopAbs_OUT) {
            return false;
        }
    }
    return true;
}

/// The widest open sector in the plane square to the edge.
gp_XYZ TorchDirection::OpenBisector(const EdgeChain::Place& place) {
    const gp_Ax2 frame(place.point, gp_Dir(place.tangent));
    const auto out = [&](double a) {
        return frame.XDirection().XYZ() * std::cos(a) + frame.YDirection().XYZ() * std::sin(a);
    };
    const auto open = [&](double a) { return IsOpen(place.point.XYZ() + Around * out(a)); };
    std::vector<double> borders; // angles at which open and closed change
    bool before = open(0);
    const bool first = before;
    for (int k = 1; k <= Directions; ++k) {
        const bool now = k == Directions ? first : open(Turn * k / Directions);
        if (now != before) {
            double low = Turn * (k - 1) / Directions;
            double high = Turn * k / Directions;
            for (int i = 0; i < Halvings; ++i) {
                const double middle = (low + high) / 2;
                (open(middle) == before ? low : high) = middle;
            }
            borders.push_back((low + high) / 2);
        }
        before = now;
    }
    if (borders.empty()) {
        node.Refuse("an edge of the shape with some of the space beside it open");
    }
    double widest = 0;
    double middle = 0;
    for (std::size_t i = first ? 1 : 0; i < borders.size(); i += 2) {
        const double next = i + 1 < borders.size() ? borders[i + 1] : borders[0] + Turn;
        middle = next - borders[i] > widest ? (next + borders[i]) / 2 : middle;
        widest = std::max(widest, next - borders[i]);
    }
    return out(middle);
}

gp_XYZ TorchDirection::FromFace(const EdgeChain::Place& place, const gp_XYZ& open) const {
    GeomAPI_ProjectPointOnSurf onFace(place.point, BRep_Tool::Surface(face));
    double u = 0;
    double v = 0;
    onFace.LowerDistanceParameters(u, v);
    gp_XYZ normal = Outward(face, u, v);
    const gp_XYZ tangent = place.tangent.XYZ();
    normal -= tangent * normal.Dot(tangent);
    if (normal.Modulus() < NoDirection) {
        node.Refuse("an edge that does not run through the face of torch");
    }
    normal.Normalize();
    const gp_XYZ across = tangent.Crossed(normal);
    return normal * std::sin(angle) + across * (across.Dot(open) < 0 ? -std::cos(angle) : std::cos(angle));
}

gp_XYZ TorchDirection::At(const EdgeChain::Place& place) {
    std::optional<gp_XYZ> out = solids.empty() ? MeanNormal(place) : OpenBisector(place);
    if (!out) {
        node.Refuse("an edge with a face whose normal is known all along it");
    }
    return (face.IsNull() ? *out : FromFace(place, *out)).Reversed();
}

} // namespace cell
