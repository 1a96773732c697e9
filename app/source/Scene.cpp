#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <Prs3d_LineAspect.hxx>
#include <algorithm>
#include <array>
#include <cell/Scene.h>
#include <cell/Solids.h>
#include <cell/Text.h>
#include <cmath>
#include <host/tools/gpHandle.h>
#include <host/view/ViewShapeUtil.h>
#include <mechanism/ToolEntity.h>

namespace cell {

namespace {

/// The triad and the marks of key poses, as parts of the cell's size.
constexpr double TriadSize = 0.085;
constexpr double MarkRadius = 0.0055;
/// How much of a tool is drawn at each pose of its path.
constexpr double ToolLength = 0.09;
constexpr double LineWidth = 0.004;
/// Names of poses nearer to each other than this part of the cell's size would run together; the first stays.
constexpr double LabelGap = 0.045;
/// Robots nearer to the floor than this (mm) stand on it.
constexpr double LowestPlinth = 10;
/// Tools shorter than this need no neck to be seen as part of the arm.
constexpr double ShortestTool = 30; // mm

/// Fine enough that silhouettes look round at the size of a screen.
constexpr double RelativeDeflection = 0.0004;
constexpr double AngularDeflection = 0.1; // rad

/// Size (mm) of a cell with nothing in it.
constexpr double EmptyScene = 1000;

const Quantity_Color Concrete(0.66, 0.68, 0.70, Quantity_TOC_sRGB);
const Quantity_Color Neck(0.30, 0.32, 0.35, Quantity_TOC_sRGB);
const Quantity_Color Ink(0.16, 0.19, 0.24, Quantity_TOC_sRGB);
const std::array<Quantity_Color, 4> PathColours = {
    Quantity_Color(0.05, 0.42, 0.80, Quantity_TOC_sRGB), Quantity_Color(0.85, 0.10, 0.35, Quantity_TOC_sRGB),
    Quantity_Color(0.02, 0.60, 0.40, Quantity_TOC_sRGB), Quantity_Color(0.50, 0.25, 0.75, Quantity_TOC_sRGB)};

Bnd_Box BoxOf(const opencascade::handle<ViewShape>& model) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(model->Shape(), box, Standard_False);
    if (box.IsVoid()) { // triangles without a surface
        BRepBndLib::Add(model->Shape(), box);
    }
    return box.Transformed(model->Transformation());
}

Graphic3d_MaterialAspect Matt() {
    Graphic3d_MaterialAspect material(Graphic3d_NOM_PLASTER);
    material.SetSpecularColor(Quantity_NOC_BLACK);
    return material;
}

} // namespace

double Scene::Size() const { return extent.IsVoid() ? EmptyScene : std::sqrt(extent.SquareExtent()); }

opencascade::handle<BaseViewShape> Scene::ShowSolid(const TopoDS_Shape& shape, const Quantity_Color& colour,
                                                    bool matt) {
    opencascade::handle<BaseViewShape> model = new BaseViewShape(shape);
    model->SetMaterial(matt ? Matt() : Graphic3d_MaterialAspect(Graphic3d_NOM_PLASTIC));
    model->SetColor(colour);
    model->Display(1, -1);
    return model;
}

void Scene::ShowLines(const TopoDS_Shape& shape, const Quantity_Color& colour, double width,
                      Aspect_TypeOfLine type) {
    opencascade::handle<BaseViewShape> model = new BaseViewShape(shape);
    model->Attributes()->SetWireAspect(new Prs3d_LineAspect(colour, type, width));
    model->Display(0, -1);
}

void Scene::ShowText(const std::string& text, const gp_Pnt& place, double height) {
    opencascade::handle<AIS_TextLabel> label = new AIS_TextLabel();
    label->SetText(TCollection_ExtendedString(text.c_str(), Standard_True));
    label->SetPosition(place);
    label->SetHeight(height);
    label->SetColor(Ink);
    label->SetFont(Font_NOF_SANS_SERIF);
    label->SetFontAspect(Font_FA_Bold);
    // In a layer of their own names cast no shadows.
    label->SetZLayer(Graphic3d_ZLayerId_Topmost);
    viewer.Context()->Display(label, Standard_False);
}

void Scene::ShowCaption(const std::string& text) {
    constexpr int Border = 14; // pixels
    if (!caption.IsNull()) {
        viewer.Context()->Remove(caption, Standard_False);
    }
    caption = new AIS_TextLabel();
    caption->SetText(TCollection_ExtendedString(text.c_str(), Standard_True));
    caption->SetHeight(17);
    caption->SetColor(Ink);
    caption->SetFont(Font_NOF_SANS_SERIF);
    caption->SetTransformPersistence(new Graphic3d_TransformPers(Graphic3d_TMF_2d, Aspect_TOTP_LEFT_LOWER,
                                                                 Graphic3d_Vec2i(Border, Border)));
    caption->SetZLayer(Graphic3d_ZLayerId_TopOSD);
    viewer.Context()->Display(caption, Standard_False);
}

// --- mechanisms --------------------------------------------------------

void Scene::ShowBody(const opencascade::handle<ViewShape>& model) {
    if (model.IsNull()) {
        return;
    }
    model->Attributes()->SetDeviationCoefficient(RelativeDeflection);
    model->Attributes()->SetDeviationAngle(AngularDeflection);
    model->Display(1, -1);
    Include(model);
}

void Scene::Include(const opencascade::handle<ViewShape>& model) {
    const Bnd_Box box = BoxOf(model);
    ground.Add(box);
    if (model->countsForExtents) {
        extent.Add(box);
    }
}

void Scene::Include(const Cell& cell) {
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        for (const auto& part : mechanism.entity->GetSubCollisionParts()) {
            Include(part);
        }
    }
}

void Scene::Show(GenericEntityConfig& entity) {
    for (const auto& [key, model] : entity.GetFixMdlMap()) {
        ShowBody(model);
    }
    for (int i = 0; i < entity.GetLinkSize(); ++i) {
        for (const auto& model : entity.GetLink(static_cast<std::size_t>(i))->models) {
            ShowBody(model);
        }
    }
    for (const auto& model : entity.GetExtraMdls()) {
        ShowBody(model);
    }
    if (auto* robot = dynamic_cast<RobotEntity*>(&entity)) {
        ShowPlinth(*robot);
        // The robot's own frame is meant for a screen that can be zoomed.
        if (!robot->GetToolFrame().IsNull()) {
            robot->GetToolFrame()->Hide();
        }
    }
}

/// A robot that is placed above the floor and carried by nothing stands on a block.
void Scene::ShowPlinth(RobotEntity& robot) {
    const double height = robot.GetRootMdlTrsf().TranslationPart().Z();
    if (height < LowestPlinth || robot.GetMountingEntity() != nullptr || !robot.IsRobotUp()) {
        return;
    }
    Bnd_Box foot;
    for (const auto& model : robot.GetFixMdls()) {
        foot.Add(BoxOf(model));
    }
    const gp_Pnt low = foot.CornerMin();
    const gp_Pnt high = foot.CornerMax();
    ShowSolid(BRepPrimAPI_MakeBox(gp_Pnt(low.X(), low.Y(), 0), gp_Pnt(high.X(), high.Y(), height)).Shape(),
              Concrete, true);
    extent.Add(gp_Pnt(low.X(), low.Y(), 0));
}

/// A tool that is a frame in the robot's list and nothing more.
void Scene::ShowNeck(const gp_Trsf& flange, const gp_Pnt& tip) {
    const gp_Pnt from(flange.TranslationPart());
    if (from.Distance(tip) <= ShortestTool) {
        return;
    }
    const gp_Vec reach(from, tip);
    const gp_Vec normal(flange.HVectorialPart().Column(3));
    const gp_Pnt bend = from.Translated(normal * (0.55 * reach.Dot(normal)));
    Assembly neck;
    neck.Add(Drum(from.Translated(normal * 18), gp_Dir(normal), 36, 18));
    if (from.Distance(bend) > 1) {
        neck.Add(Tube(from, bend, 20, 17));
    }
    neck.Add(Ball(bend, 17));
    neck.Add(Tube(bend, tip, 17, 5));
    toolCentres.push_back(ShowSolid(neck.Shape(), Neck, false));
}

void Scene::ShowToolCentres(const std::vector<RobotEntity*>& robots) {
    for (const auto& model : toolCentres) {
        model->RemoveFromView();
    }
    toolCentres.clear();
    for (const RobotEntity* robot : robots) {
        ShowToolCentre(*robot);
    }
}

void Scene::ShowToolCentre(const RobotEntity& robot) {
    const gp_Trsf tcp = robot.GetCurrentTrsfTCP();
    const gp_Pnt to(tcp.TranslationPart());
    if (robot.GetToolEntity() == nullptr) {
        ShowNeck(robot.GetCurrentTrsfTool0(), to);
    }
    const int size = std::max(1, static_cast<int>(TriadSize * Size()));
    const auto triad = ViewShapeUtil::GenDirModel(gpHandle::TrsfToAx2(tcp), size);
    triad->Display(1, -1);
    toolCentres.push_back(triad);
    extent.Add(to);
}

// --- paths ------------------------------------------------------------

void Scene::ShowPath(const PlannedMotion& planned, std::size_t number) {
    const Quantity_Color& colour = PathColours[number % PathColours.size()];
    BRepBuilderAPI_MakePolygon path;
    for (const gp_Pnt& point : planned.tcpPath) {
        path.Add(point);
        extent.Add(point);
    }
    if (path.IsDone()) {
        ShowLines(path.Shape(), colour, 4.0, Aspect_TOL_SOLID);
    }
    for (const KeyState& key : planned.motion->keys) {
        if (std::find(shownKeys.begin(), shownKeys.end(), key.name) == shownKeys.end()) {
            ShowKeyPose(key, colour);
            shownKeys.push_back(key.name);
        }
    }
}

void Scene::ShowToolPath(const WorkedPath& path, std::size_t number) {
    BRepBuilderAPI_MakePolygon line;
    Assembly tools;
    const double length = ToolLength * Size();
    for (const auto& [x, y, z, dx, dy, dz] : path.poses) {
        const gp_Pnt point(x, y, z);
        const gp_Pnt from = point.Translated(gp_Vec(dx, dy, dz) * -length);
        // Lifted a little, or half of the line would lie inside the part.
        line.Add(point.Translated(gp_Vec(dx, dy, dz) * (-LineWidth * Size())));
        tools.Add(BRepBuilderAPI_MakeEdge(point, from).Shape());
        extent.Add(from);
    }
    if (line.IsDone()) {
        ShowLines(line.Shape(), PathColours[(number + 1) % PathColours.size()], 4.0, Aspect_TOL_SOLID);
        ShowLines(tools.Shape(), PathColours[number % PathColours.size()], 2.5, Aspect_TOL_SOLID);
    }
}

/// The thin line down to the floor tells where in depth the pose is.
void Scene::ShowKeyPose(const KeyState& key, const Quantity_Color& colour) {
    const gp_Pnt place = key.state.GetLocEuler(0).location;
    const double radius = MarkRadius * Size();
    ShowSolid(Ball(place, radius), colour, false);
    const gp_Pnt below(place.X(), place.Y(), LineLift);
    extent.Add(below);
    if (place.Z() > radius) {
        ShowLines(BRepBuilderAPI_MakeEdge(place, below).Shape(), colour, 1.0, Aspect_TOL_DASH);
    }
    const auto isNear = [&](const gp_Pnt& other) { return place.Distance(other) < LabelGap * Size(); };
    if (std::none_of(labelled.begin(), labelled.end(), isNear)) {
        ShowText(key.name, place.Translated(gp_Vec(0, 0, 2.2 * radius)), 17);
        labelled.push_back(place);
    }
}

} // namespace cell
