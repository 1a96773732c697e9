#include <BRepBuilderAPI_Copy.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cmath>
#include <map>
#include <mechanism/ToolEntity.h>
#include <numbers>
#include <scene/SideView.h>

namespace cell {

namespace {

constexpr double Deflection = 1.5; // mm
constexpr double Angle = 0.35;     // rad
/// Number of shades: few keep the drawing small, enough make bodies look round.
constexpr int Shades = 6;
constexpr double Darkest = 0.55;

/// From the viewer's side, above and to the left.
const gp_XYZ Light = gp_XYZ(-0.45, -0.65, 0.6).Normalized();

struct Body {
    double depth; ///< y of its middle; the viewer looks along +y
    std::vector<SideView::Patch> patches;
};

/// The triangles that face the viewer, by shade.
class Shader {
public:
    Shader(const ViewShape& model, const gp_Trsf& toView_) : toView(toView_) {
        model.Color(colour);
        // The finer triangles made for pictures would make the drawing a hundred times larger.
        const TopoDS_Shape shape = BRepBuilderAPI_Copy(model.Shape(), Standard_True, Standard_False).Shape();
        const BRepMesh_IncrementalMesh mesher(shape, Deflection, Standard_False, Angle);
        for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
            Add(TopoDS::Face(faces.Current()));
        }
    }

    Body Result() const {
        Body body{count > 0 ? depths / count : 0, {}};
        for (const auto& [shade, patch] : patches) {
            body.patches.push_back(patch);
        }
        return body;
    }

private:
    void Add(const TopoDS_Face& face) {
        TopLoc_Location location;
        const auto mesh = BRep_Tool::Triangulation(face, location);
        if (mesh.IsNull()) {
            return;
        }
        const gp_Trsf place = toView * location.Transformation();
        for (int i = 1; i <= mesh->NbTriangles(); ++i) {
            int a = 0;
            int b = 0;
            int c = 0;
            mesh->Triangle(i).Get(a, b, c);
            if (face.Orientation() == TopAbs_REVERSED) {
                std::swap(b, c);
            }
            AddTriangle({mesh->Node(a).Transformed(place), mesh->Node(b).Transformed(place),
                         mesh->Node(c).Transformed(place)});
        }
    }

    void AddTriangle(const std::array<gp_Pnt, 3>& corners) {
        const gp_XYZ normal =
            (corners[1].XYZ() - corners[0].XYZ()).Crossed(corners[2].XYZ() - corners[0].XYZ());
        depths += corners[0].Y();
        ++count;
        if (!(normal.Y() < 0)) {
            return;
        }
        const double lit = std::max(0.0, normal.Normalized().Dot(Light));
        const int shade = static_cast<int>(std::lround(lit * (Shades - 1)));
        SideView::Patch& patch = patches[shade];
        const double strength = Darkest + (1 - Darkest) * shade / (Shades - 1);
        Quantity_TypeOfColor space = Quantity_TOC_sRGB;
        colour.Values(patch.colour[0], patch.colour[1], patch.colour[2], space);
        for (double& part : patch.colour) {
            part *= strength;
        }
        patch.triangles.push_back(
            {corners[0].X(), corners[0].Z(), corners[1].X(), corners[1].Z(), corners[2].X(), corners[2].Z()});
    }

    gp_Trsf toView;
    Quantity_Color colour;
    double depths = 0;
    int count = 0;
    std::map<int, SideView::Patch> patches;
};

gp_Trsf ViewOf(const RobotEntity& robot) {
    gp_Trsf view = robot.GetRootMdlTrsf().Inverted();
    if (gp_Pnt(robot.GetCurrentTrsfTCP().TranslationPart()).Transformed(view).X() < 0) {
        gp_Trsf turn;
        turn.SetRotation(gp::OZ(), std::numbers::pi);
        view = turn * view;
    }
    return view;
}

void Widen(SideView& view) {
    for (const auto& body : view.bodies) {
        for (const SideView::Patch& patch : body) {
            for (const auto& [ax, az, bx, bz, cx, cz] : patch.triangles) {
                view.left = std::min({view.left, ax, bx, cx});
                view.right = std::max({view.right, ax, bx, cx});
                view.bottom = std::min({view.bottom, az, bz, cz});
                view.top = std::max({view.top, az, bz, cz});
            }
        }
    }
}

} // namespace

SideView SeenFromTheSide(RobotEntity& robot) {
    const gp_Trsf toView = ViewOf(robot);
    std::vector<Body> bodies;
    for (const opencascade::handle<ShapeEntity>& model : robot.GetSubCollisionParts()) {
        bodies.push_back(Shader(*model, toView * model->Transformation()).Result());
    }
    if (ToolEntity* tool = robot.GetToolEntity()) {
        for (const opencascade::handle<ShapeEntity>& model : tool->GetSubCollisionParts()) {
            bodies.push_back(Shader(*model, toView * model->Transformation()).Result());
        }
    }
    std::stable_sort(bodies.begin(), bodies.end(),
                     [](const Body& a, const Body& b) { return a.depth > b.depth; });
    SideView view;
    for (Body& body : bodies) {
        view.bodies.push_back(std::move(body.patches));
    }
    Widen(view);
    const gp_Pnt centre = gp_Pnt(robot.GetCurrentTrsfTCP().TranslationPart()).Transformed(toView);
    view.toolCentre = {std::hypot(centre.X(), centre.Y()), centre.Z()};
    return view;
}

} // namespace cell
