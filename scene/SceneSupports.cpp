#include <BRepPrimAPI_MakeBox.hxx>
#include <algorithm>
#include <cell/bodies/Solids.h>
#include <scene/Scene.h>

// What robots stand on in pictures, and shapes that move with a mechanism without being part of it.

namespace cell {

namespace {

/// Robots nearer to the floor than this (mm), and feet nearer to their robot's origin, need no support.
constexpr double LowestSupport = 10;
/// A column and the plate below it, as parts of the foot's width.
constexpr double ColumnRadius = 0.36;
constexpr double PlateRadius = 0.5;
constexpr double PlateThickness = 0.08;

const Quantity_Color Concrete(0.66, 0.68, 0.70, Quantity_TOC_sRGB);

} // namespace

/// A robot that is placed above the floor and carried by nothing stands on a block.
void Scene::ShowPlinth(RobotEntity& robot) {
    const double height = robot.GetRootMdlTrsf().TranslationPart().Z();
    if (height < LowestSupport || robot.GetMountingEntity() != nullptr || !robot.IsRobotUp()) {
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

/// The bodies of an arm that is described from its shoulder on begin above its origin: a column carries them.
void Scene::ShowColumn(RobotEntity& robot) {
    Bnd_Box foot; // in the robot's frame
    for (const auto& model : robot.GetFixMdls()) {
        foot.Add(BoxOf(model, robot.GetRootMdlTrsf()));
    }
    if (foot.IsVoid() || foot.CornerMin().Z() < LowestSupport) {
        return;
    }
    const gp_Pnt low = foot.CornerMin();
    const gp_Pnt high = foot.CornerMax();
    const gp_Pnt below((low.X() + high.X()) / 2, (low.Y() + high.Y()) / 2, 0);
    const gp_Pnt top(below.X(), below.Y(), low.Z());
    const double width = std::min(high.X() - low.X(), high.Y() - low.Y());
    const double plate = std::min(PlateThickness * width, low.Z());
    Assembly column;
    column.Add(Tube(below, top, ColumnRadius * width, ColumnRadius * width));
    column.Add(Drum(below.Translated(gp_Vec(0, 0, plate / 2)), gp::DZ(), PlateRadius * width, plate / 2));
    Attach(ShowSolid(column.Shape(), Concrete, true), robot);
}

void Scene::Attach(const opencascade::handle<BaseViewShape>& shape, const GenericEntityConfig& carrier) {
    attached.emplace_back(shape, &carrier);
    shape->SetLocalTransformation(carrier.GetRootMdlTrsf());
    extent.Add(BoxOf(shape));
}

void Scene::Follow() {
    for (const auto& [shape, carrier] : attached) {
        shape->SetLocalTransformation(carrier->GetRootMdlTrsf());
        extent.Add(BoxOf(shape));
    }
}

} // namespace cell
