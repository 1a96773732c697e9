#include <BRepMesh_IncrementalMesh.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <algorithm>
#include <host/workpiece/GenericEntityConfig.h>
#include <stdexcept>

// The models below an entity's root, and its watertight surface.

namespace {

constexpr double MeshDeflection = 0.5;
constexpr double MeshAngle = 0.35;

bool IsClosed(const TopoDS_Shape& shape) {
    TopExp_Explorer shells(shape, TopAbs_SHELL);
    if (!shells.More()) {
        return false;
    }
    for (; shells.More(); shells.Next()) {
        if (!BRep_Tool::IsClosed(shells.Current())) {
            return false;
        }
    }
    return true;
}

bool Hangs(const opencascade::handle<ViewShape>& root, const opencascade::handle<ShapeEntity>& model) {
    const auto& children = root->Children();
    return std::any_of(children.begin(), children.end(),
                       [&](const auto& child) { return child.get() == model.get(); });
}

} // namespace

void GenericEntityConfig::AddSubMdlList(const std::set<opencascade::handle<ShapeEntity>>& models, bool keep) {
    std::vector<opencascade::handle<ShapeEntity>> ordered(models.begin(), models.end());
    std::sort(ordered.begin(), ordered.end(),
              [](const auto& a, const auto& b) { return a->GetSerial() < b->GetSerial(); });
    if (!keep) {
        for (const auto& [key, model] : fixMdls) {
            model->RemoveFromView();
            if (!rootMdl.IsNull()) {
                rootMdl->RemoveChild(model);
            }
        }
        fixMdls.clear();
    }
    for (const auto& model : ordered) {
        if (!keep) {
            AddFixMdl(model);
        } else if (std::find(extraMdls.begin(), extraMdls.end(), model) == extraMdls.end()) {
            extraMdls.push_back(model);
            if (!rootMdl.IsNull()) {
                rootMdl->AddChildWithCurrentTransformation(model);
            }
        }
    }
    // Models that were detached from the root with all other children are attached again, at the same
    // relative place.
    for (const auto& model : extraMdls) {
        if (!rootMdl.IsNull() && !Hangs(rootMdl, model)) {
            rootMdl->AddChild(model);
        }
    }
}

void GenericEntityConfig::RemoveSubMdl(const opencascade::handle<ShapeEntity>& model) {
    if (std::erase(extraMdls, model) == 0) {
        return;
    }
    model->RemoveFromView();
    if (!rootMdl.IsNull() && Hangs(rootMdl, model)) {
        rootMdl->RemoveChild(model);
    }
}

void Entity::UpdateWatertightMeshModel(const TopoDS_Shape& shape, bool withParts, bool mesh) {
    if (shape.IsNull() || !IsClosed(shape)) {
        throw std::invalid_argument(name + ": the watertight model must be a closed shape");
    }
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    builder.Add(compound, shape);
    if (withParts) {
        for (const auto& [key, model] : fixMdls) {
            for (TopExp_Explorer solids(model->Shape(), TopAbs_SOLID); solids.More(); solids.Next()) {
                builder.Add(compound, solids.Current());
            }
        }
    }
    if (mesh) {
        BRepMesh_IncrementalMesh(compound, MeshDeflection, Standard_False, MeshAngle);
    }
    watertightMesh = compound;
}
