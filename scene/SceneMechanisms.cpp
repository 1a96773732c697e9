#include <BRepBndLib.hxx>
#include <algorithm>
#include <cell/bodies/Solids.h>
#include <host/tools/gpHandle.h>
#include <host/view/ViewShapeUtil.h>
#include <mechanism/ToolEntity.h>
#include <scene/Scene.h>

namespace cell {

namespace {

/// The triad, as part of the cell's size.
constexpr double TriadSize = 0.085;
/// Tools shorter than this are drawn without a neck.
constexpr double ShortestTool = 30; // mm

/// Fine enough that silhouettes look round at the size of a screen.
constexpr double RelativeDeflection = 0.0004;
constexpr double AngularDeflection = 0.1; // rad

const Quantity_Color Neck(0.30, 0.32, 0.35, Quantity_TOC_sRGB);

} // namespace

Bnd_Box Scene::BoxOf(const opencascade::handle<BaseViewShape>& model, const gp_Trsf& frame) {
    Bnd_Box box;
    BRepBndLib::AddOptimal(model->Shape(), box, Standard_False);
    if (box.IsVoid()) { // triangles without a surface
        BRepBndLib::Add(model->Shape(), box);
    }
    return box.Transformed(frame.Inverted() * model->Transformation());
}

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
    Follow();
}

Bnd_Box Scene::ExtentOf(GenericEntityConfig& entity) {
    Bnd_Box box;
    for (const auto& part : entity.GetSubCollisionParts()) {
        box.Add(BoxOf(part));
    }
    return box;
}

void Scene::Show(const Cell& cell) {
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        Show(*mechanism.entity);
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
        ShowColumn(*robot);
        // The robot's own frame is too small for a picture that cannot be zoomed.
        if (!robot->GetToolFrame().IsNull()) {
            robot->GetToolFrame()->Hide();
        }
    }
}

void Scene::ShowEnvelope(const Reach& reach) {
    reach.robot->ShowBestWorkspace(true);
    BRepBndLib::Add(reach.envelope, extent);
}

void Scene::ShowMaxReach(const Reach& reach) {
    const auto& model = reach.robot->GetUnsafeWorkspaceModel();
    model->Display(1, -1);
    extent.Add(BoxOf(model));
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

void Scene::ShowToolCentres(const std::vector<RobotEntity*>& robots, bool withFrames) {
    for (const auto& model : toolCentres) {
        model->RemoveFromView();
    }
    toolCentres.clear();
    if (tcpSize == 0) { // once: a frame that grows while the arm moves looks like one that comes nearer
        tcpSize = std::max(1, static_cast<int>(TriadSize * Size()));
    }
    for (const RobotEntity* robot : robots) {
        ShowToolCentre(*robot, withFrames);
    }
}

void Scene::ShowToolCentre(const RobotEntity& robot, bool withFrame) {
    const gp_Trsf tcp = robot.GetCurrentTrsfTCP();
    const gp_Pnt to(tcp.TranslationPart());
    if (robot.GetToolEntity() == nullptr) {
        ShowNeck(robot.GetCurrentTrsfTool0(), to);
    }
    if (withFrame) {
        const auto triad = ViewShapeUtil::GenDirModel(gpHandle::TrsfToAx2(tcp), tcpSize);
        triad->Display(1, -1);
        toolCentres.push_back(triad);
    }
    extent.Add(to);
}

} // namespace cell
