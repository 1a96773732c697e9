#include <host/view/AIS_Mesh.h>

#include <Graphic3d_Group.hxx>
#include <Prs3d_Presentation.hxx>
#include <Prs3d_ShadingAspect.hxx>
#include <Select3D_SensitivePrimitiveArray.hxx>
#include <SelectMgr_EntityOwner.hxx>
#include <SelectMgr_Selection.hxx>
#include <Standard_ProgramError.hxx>
#include <algorithm>
#include <cfloat>
#include <cstddef>
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

/// A corner as the primitive array holds it: place and normal in turn.
struct Vertex {
    float place[3];
    float normal[3];
};

/// Where the next corner of a layer goes. Arrays of an exact size need no check for each corner.
struct Pen {
    opencascade::handle<Graphic3d_ArrayOfTriangles> array;
    int triangles = 0;
    Vertex* next = nullptr;

    void Open() {
        array = new Graphic3d_ArrayOfTriangles(3 * triangles, 0, Standard_True);
        const opencascade::handle<Graphic3d_Buffer>& buffer = array->Attributes();
        if (buffer->Stride != sizeof(Vertex) || buffer->AttributeOffset(1) != offsetof(Vertex, normal)) {
            throw Standard_ProgramError("the kernel lays vertices out otherwise");
        }
        buffer->NbElements = 3 * triangles;
        next = reinterpret_cast<Vertex*>(buffer->ChangeData());
    }
    void Write(Corners corners) {
        const Graphic3d_Vec3 normal = NormalOf(corners);
        for (const auto& [x, y, z] : corners) {
            *next++ = {{x, y, z}, {normal.x(), normal.y(), normal.z()}};
        }
    }
};

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
    std::map<std::uint32_t, Pen> pens;
    EachByLayer(meshes, pens, [](const AISMESH& /*record*/, Pen& pen) { ++pen.triangles; });
    for (auto& [layer, pen] : pens) {
        pen.Open();
        triangles.push_back({pen.array, {}, layer, static_cast<std::uint64_t>(pen.triangles)});
    }
    Bounds bounds;
    EachByLayer(meshes, pens, [&bounds](const AISMESH& record, Pen& pen) {
        pen.Write(record.corners);
        bounds.Add(record.corners);
    });
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
    if (triangles.empty()) {
        return;
    }
    const gp_Pnt low = box.CornerMin();
    const gp_Pnt high = box.CornerMax();
    for (const MeshLayer& layer : triangles) {
        const opencascade::handle<Graphic3d_Group> group = structure->NewGroup();
        group->SetGroupPrimitivesAspect(myDrawer->ShadingAspect()->Aspect());
        group->AddPrimitiveArray(layer.drawing, Standard_False);
        group->SetMinMaxValues(low.X(), low.Y(), low.Z(), high.X(), high.Y(), high.Z());
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
