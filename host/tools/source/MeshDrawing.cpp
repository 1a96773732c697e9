#include <host/tools/AIS_Mesh.h>

#include <Graphic3d_Group.hxx>
#include <Prs3d_Presentation.hxx>
#include <Prs3d_ShadingAspect.hxx>
#include <Select3D_SensitivePrimitiveArray.hxx>
#include <SelectMgr_EntityOwner.hxx>
#include <SelectMgr_Selection.hxx>
#include <algorithm>
#include <cfloat>
#include <map>

namespace mesh {

namespace {

using Corners = const float (&)[3][3];

// Degenerate triangles have no normal; any direction shades them, as they have no area to show it.
Graphic3d_Vec3 NormalOf(Corners corners) {
    const auto side = [&](int corner) {
        return Graphic3d_Vec3(corners[corner][0] - corners[0][0], corners[corner][1] - corners[0][1],
                              corners[corner][2] - corners[0][2]);
    };
    const Graphic3d_Vec3 normal = Graphic3d_Vec3::Cross(side(1), side(2));
    const float length = normal.Modulus();
    return length > 0 ? normal / length : Graphic3d_Vec3(0, 0, 1);
}

/// Calls `treat` with the entry of each record's layer; records of one layer mostly follow each other.
template <class Entry, class Treat>
void EachByLayer(const std::vector<AISMESH>& records, std::map<std::uint32_t, Entry>& layers,
                 const Treat& treat) {
    Entry* entry = nullptr;
    std::uint32_t layer = 0;
    for (const AISMESH& record : records) {
        if (entry == nullptr || record.layer != layer) {
            layer = record.layer;
            entry = &layers[layer];
        }
        treat(record, *entry);
    }
}

/// The least and the greatest of each coordinate.
struct Bounds {
    float low[3] = {FLT_MAX, FLT_MAX, FLT_MAX};
    float high[3] = {-FLT_MAX, -FLT_MAX, -FLT_MAX};

    void Add(Corners corners) {
        for (const auto& corner : corners) {
            for (int axis = 0; axis < 3; ++axis) {
                low[axis] = std::min(low[axis], corner[axis]);
                high[axis] = std::max(high[axis], corner[axis]);
            }
        }
    }
};

} // namespace

// The records stay where they are, and each is written once, into the buffer that the view draws from and the
// selection searches. Every triangle has corners of its own there, so that edges stay sharp.
void AIS_Mesh::FillLayers() {
    triangles.clear();
    box.SetVoid();
    obb.SetVoid();
    std::map<std::uint32_t, MeshLayer> layers;
    EachByLayer(meshes, layers, [](const AISMESH& /*record*/, MeshLayer& layer) { ++layer.triangleCount; });
    for (auto& [number, layer] : layers) {
        layer.layer = number;
        layer.drawing =
            new Graphic3d_ArrayOfTriangles(3 * static_cast<int>(layer.triangleCount), 0, Standard_True);
    }
    Bounds bounds;
    EachByLayer(meshes, layers, [&bounds](const AISMESH& record, MeshLayer& layer) {
        const Graphic3d_Vec3 normal = NormalOf(record.corners);
        for (const auto& [x, y, z] : record.corners) {
            layer.drawing->AddVertex(x, y, z, normal.x(), normal.y(), normal.z());
        }
        bounds.Add(record.corners);
    });
    for (const auto& [number, layer] : layers) {
        triangles.push_back(layer);
    }
    if (!meshes.empty()) {
        box.Update(bounds.low[0], bounds.low[1], bounds.low[2], bounds.high[0], bounds.high[1],
                   bounds.high[2]);
        obb = Bnd_OBB(box);
    }
}

void AIS_Mesh::Compute(const opencascade::handle<PrsMgr_PresentationManager>& /*manager*/,
                       const opencascade::handle<Graphic3d_Structure>& structure, int /*mode*/) {
    FillLayers();
    if (!myDrawer->HasOwnShadingAspect()) {
        myDrawer->SetupOwnShadingAspect();
    }
    for (const MeshLayer& layer : triangles) {
        const opencascade::handle<Graphic3d_Group> group = structure->NewGroup();
        group->SetGroupPrimitivesAspect(myDrawer->ShadingAspect()->Aspect());
        group->AddPrimitiveArray(layer.drawing);
    }
}

void AIS_Mesh::SetColor(const Quantity_Color& colour) {
    AIS_InteractiveObject::SetColor(colour);
    if (!myDrawer->HasOwnShadingAspect()) {
        myDrawer->SetupOwnShadingAspect();
    }
    myDrawer->ShadingAspect()->SetColor(colour);
    SynchronizeAspects();
}

void AIS_Mesh::ComputeSelection(const opencascade::handle<SelectMgr_Selection>& selection, int mode) {
    if (mode != 0) {
        return;
    }
    const opencascade::handle<SelectMgr_EntityOwner> owner = new SelectMgr_EntityOwner(this);
    if (triangles.empty()) {
        FillLayers();
    }
    for (MeshLayer& layer : triangles) {
        const opencascade::handle<Select3D_SensitivePrimitiveArray> searched =
            new Select3D_SensitivePrimitiveArray(owner);
        searched->InitTriangulation(layer.drawing->Attributes(), layer.drawing->Indices(), TopLoc_Location());
        layer.selection = searched;
        selection->Add(searched);
    }
}

} // namespace mesh
