#include <BRepAdaptor_Surface.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeVertex.hxx>
#include <BRepExtrema_DistShapeShape.hxx>
#include <BRepLProp_SLProps.hxx>
#include <Bnd_Box.hxx>
#include <IntCurvesFace_Intersector.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <algorithm>
#include <cell/model/ToolPathReader.h>
#include <cmath>
#include <gp_Ax3.hxx>
#include <optional>
#include <utility>

namespace cell {

namespace {

constexpr double Tolerance = 1e-7;
constexpr double NoDirection = 1e-6;
/// The edge of the face is found to the step over 2 to this.
constexpr int Halvings = 24;

struct Hit {
    gp_XYZ point, normal;
};

/// Parallel lines over a face, seen along its normal in the middle.
class Strokes {
public:
    Strokes(const TopoDS_Shape& shape, JsonNode node_) : node(std::move(node_)) {
        node.OnlyKeys({"face_near_mm", "direction", "spacing_mm", "step_mm", "lead_mm", "stand_off_mm"});
        FindFace(shape);
        intersector.emplace(face, Tolerance);
        const auto d = node.At("direction").Triple();
        gp_XYZ along(d[0], d[1], d[2]);
        along -= middle.normal * along.Dot(middle.normal);
        if (along.Modulus() < NoDirection) {
            node.At("direction").Refuse("a direction along the face");
        }
        frame = gp_Ax3(middle.point, gp_Dir(middle.normal), gp_Dir(along));
        gp_Trsf toFrame;
        toFrame.SetTransformation(frame);
        Bnd_Box box;
        BRepBndLib::AddOptimal(face.Moved(TopLoc_Location(toFrame)), box, Standard_False, Standard_False);
        box.Get(low[0], low[1], low[2], high[0], high[1], high[2]);
    }

    std::vector<ToolPose> Poses() const {
        const double width = high[1] - low[1];
        const double spacing = node.At("spacing_mm").Length();
        const double step = node.At("step_mm").Length();
        if (spacing > width) {
            node.At("spacing_mm").Refuse("at most the face's width (" + std::to_string(width) + " mm)");
        }
        if (width / spacing * (high[0] - low[0]) / step > MostPoses) {
            node.At("step_mm").Refuse("a step that gives at most 1000000 poses");
        }
        const int count = std::max(1, static_cast<int>(std::lround(width / spacing)));
        std::vector<ToolPose> poses;
        for (int k = 0; k < count; ++k) {
            std::vector<ToolPose> stroke = Stroke(low[1] + (k + 0.5) * width / count, step);
            if (k % 2 == 1) {
                std::reverse(stroke.begin(), stroke.end());
            }
            poses.insert(poses.end(), stroke.begin(), stroke.end());
        }
        if (poses.size() < 2) {
            node.Refuse("strokes that miss the face", "a face that the strokes run over");
        }
        return poses;
    }

private:
    void FindFace(const TopoDS_Shape& shape) {
        const auto p = node.At("face_near_mm").Position();
        const TopoDS_Shape vertex = BRepBuilderAPI_MakeVertex(gp_Pnt(p[0], p[1], p[2])).Shape();
        double least = RealLast();
        for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
            const BRepExtrema_DistShapeShape distance(faces.Current(), vertex);
            if (distance.IsDone() && distance.Value() < least) {
                least = distance.Value();
                face = TopoDS::Face(faces.Current());
            }
        }
        const BRepAdaptor_Surface surface(face);
        middle = At((surface.FirstUParameter() + surface.LastUParameter()) / 2,
                    (surface.FirstVParameter() + surface.LastVParameter()) / 2);
    }
    Hit At(double u, double v) const {
        BRepLProp_SLProps properties(BRepAdaptor_Surface(face), u, v, 1, Tolerance);
        if (!properties.IsNormalDefined()) {
            node.Refuse("a face whose normal is known all over it");
        }
        const gp_XYZ normal = properties.Normal().XYZ();
        return {properties.Value().XYZ(), face.Orientation() == TopAbs_REVERSED ? normal.Reversed() : normal};
    }
    /// Where the face is met from outside.
    std::optional<Hit> Meet(double x, double y) const {
        const gp_XYZ from = frame.Location().XYZ() + frame.XDirection().XYZ() * x +
                            frame.YDirection().XYZ() * y + frame.Direction().XYZ() * (high[2] + 1);
        intersector->Perform(gp_Lin(from, frame.Direction().Reversed()), 0, high[2] - low[2] + 2);
        if (!intersector->IsDone() || intersector->NbPnt() == 0) {
            return std::nullopt;
        }
        int first = 1;
        for (int i = 2; i <= intersector->NbPnt(); ++i) {
            first = intersector->WParameter(i) < intersector->WParameter(first) ? i : first;
        }
        return At(intersector->UParameter(first), intersector->VParameter(first));
    }
    /// The last place that is met between one that is and one that is not.
    Hit Edge(double inside, double outside, double y) const {
        Hit hit = *Meet(inside, y);
        for (int i = 0; i < Halvings; ++i) {
            const double middleX = (inside + outside) / 2;
            const auto there = Meet(middleX, y);
            hit = there ? *there : hit;
            (there ? inside : outside) = middleX;
        }
        return hit;
    }
    std::vector<ToolPose> Stroke(double y, double step) const {
        const int count = std::max(2, static_cast<int>(std::ceil((high[0] - low[0]) / step)));
        const double apart = (high[0] - low[0]) / count;
        std::vector<Hit> hits;
        int lastIn = -1;
        for (int i = 0; i <= count; ++i) {
            const double x = low[0] + i * apart;
            const auto hit = Meet(x, y);
            if (hit && hits.empty()) {
                hits.push_back(Edge(x, x - apart, y));
            } else if (hit) {
                hits.push_back(*hit);
            }
            lastIn = hit ? i : lastIn;
        }
        if (hits.size() > 1) {
            hits.back() = Edge(low[0] + lastIn * apart, low[0] + (lastIn + 1) * apart, y);
        }
        return WithLeads(hits);
    }
    std::vector<ToolPose> WithLeads(const std::vector<Hit>& hits) const {
        const auto given = node.Find("lead_mm");
        const double lead = given ? given->Length() : 0;
        const double off = node.At("stand_off_mm").Length();
        std::vector<ToolPose> poses;
        const auto add = [&](const Hit& hit, const gp_XYZ& shift) {
            const gp_XYZ p = hit.point + hit.normal * off + shift;
            poses.push_back({p.X(), p.Y(), p.Z(), -hit.normal.X(), -hit.normal.Y(), -hit.normal.Z()});
        };
        const auto out = [&](const Hit& end, const Hit& before) {
            gp_XYZ leg = end.point - before.point;
            leg -= end.normal * leg.Dot(end.normal);
            add(end, leg.Normalized() * lead);
        };
        if (hits.size() < 2) {
            return poses;
        }
        if (lead > 0) {
            out(hits.front(), hits[1]);
        }
        for (const Hit& hit : hits) {
            add(hit, {});
        }
        if (lead > 0) {
            out(hits.back(), hits[hits.size() - 2]);
        }
        return poses;
    }

    JsonNode node;
    TopoDS_Face face;
    mutable std::optional<IntCurvesFace_Intersector> intersector;
    Hit middle;
    gp_Ax3 frame;
    std::array<double, 3> low{}, high{}; ///< of the face in the frame
};

} // namespace

std::vector<ToolPose> PosesOfStrokes(const TopoDS_Shape& shape, const JsonNode& node) {
    return Strokes(shape, node).Poses();
}

} // namespace cell
