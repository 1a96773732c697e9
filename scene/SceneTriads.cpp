#include <algorithm>
#include <cmath>
#include <host/tools/gpHandle.h>
#include <host/view/ViewShapeUtil.h>
#include <scene/Scene.h>

namespace cell {

namespace {

/// A frame's arrows, as part of the size of what the picture is of.
constexpr double TriadSize = 0.045;
constexpr double NameHeight = 15;
/// Origins nearer to each other than this part of the arrows share a label.
constexpr double SamePlace = 0.4;

} // namespace

/// Frames lie inside bodies: they are drawn over everything. Those with one origin share a label.
void Scene::ShowTriad(const gp_Trsf& frame, const std::string& name, int size) {
    const auto triad = ViewShapeUtil::GenDirModel(gpHandle::TrsfToAx2(frame), size);
    triad->SetZLayer(Graphic3d_ZLayerId_Topmost);
    triad->Display(1, -1);
    triads.push_back(triad);
    gp_Pnt place(frame.TranslationPart());
    place.Translate(gp_Vec(0.15, 0.1, 0.35) * size);
    for (const auto& [label, at] : triadNames) {
        if (at.Distance(place) < SamePlace * size) {
            label->SetText(label->Text() + ", " + name.c_str());
            viewer.Context()->Redisplay(label, Standard_False);
            return;
        }
    }
    const auto label = ShowText(name, place, NameHeight);
    label->SetDisplayType(Aspect_TODT_SUBTITLE); // bodies behind it may be as dark as the letters
    label->SetColorSubTitle(Quantity_NOC_WHITE);
    triads.push_back(label);
    triadNames.emplace_back(label, place);
}

void Scene::HideTriads() {
    for (const auto& triad : triads) {
        viewer.Context()->Remove(triad, Standard_False);
    }
    triads.clear();
    triadNames.clear();
}

void Scene::ShowTriads(const Cell& cell, const Bnd_Box& subject) {
    HideTriads();
    const int size = std::max(1, static_cast<int>(TriadSize * std::sqrt(subject.SquareExtent())));
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        GenericEntityConfig& entity = *mechanism.entity;
        if (entity.GetLinkSize() == 0) {
            continue;
        }
        ShowTriad(entity.GetRootMdlTrsf(), entity.GetName(), size);
        for (int i = 0; i < entity.GetLinkSize(); ++i) {
            ShowTriad(entity.GetLink(static_cast<std::size_t>(i))->worldTrsf, std::to_string(i + 1), size);
        }
        for (int i = 0; i < entity.GetFlangeSize(); ++i) {
            ShowTriad(entity.GetFlangeWorldTrsf(*entity.GetFlangeByIndex(i)), "flange", size);
        }
        if (const auto* robot = dynamic_cast<const RobotEntity*>(&entity)) {
            ShowTriad(robot->GetCurrentTrsfTCP(), "TCP", size);
        }
    }
}

} // namespace cell
