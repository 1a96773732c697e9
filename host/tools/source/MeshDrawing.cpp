#include <host/tools/AIS_Mesh.h>

#include <Graphic3d_Group.hxx>
#include <Prs3d_Presentation.hxx>
#include <Prs3d_ShadingAspect.hxx>
#include <Select3D_SensitiveTriangulation.hxx>
#include <SelectMgr_EntityOwner.hxx>
#include <SelectMgr_Selection.hxx>
#include <gp.hxx>
#include <map>

namespace mesh {

namespace {

using Members = std::vector<const AISMESH*>;

gp_Pnt Corner(const AISMESH& triangle, int corner) {
    const float* at = triangle.corners[corner];
    return {at[0], at[1], at[2]};
}

// Degenerate triangles have no normal; any direction shades them, as they have no area to show it.
gp_Dir NormalOf(const AISMESH& triangle) {
    const gp_Pnt origin = Corner(triangle, 0);
    const gp_Vec normal = gp_Vec(origin, Corner(triangle, 1)) ^ gp_Vec(origin, Corner(triangle, 2));
    return normal.SquareMagnitude() > 0 ? gp_Dir(normal) : gp::DZ();
}

// Every triangle has corners of its own, so that edges stay sharp.
opencascade::handle<Graphic3d_ArrayOfTriangles> DrawingOf(const Members& members) {
    opencascade::handle<Graphic3d_ArrayOfTriangles> drawing =
        new Graphic3d_ArrayOfTriangles(3 * static_cast<int>(members.size()), 0, Standard_True);
    for (const AISMESH* triangle : members) {
        const gp_Dir normal = NormalOf(*triangle);
        for (int corner = 0; corner < 3; ++corner) {
            drawing->AddVertex(Corner(*triangle, corner), normal);
        }
    }
    return drawing;
}

opencascade::handle<Poly_Triangulation> SelectionOf(const Members& members) {
    const int count = static_cast<int>(members.size());
    opencascade::handle<Poly_Triangulation> selection =
        new Poly_Triangulation(3 * count, count, Standard_False);
    for (int i = 0; i < count; ++i) {
        for (int corner = 0; corner < 3; ++corner) {
            selection->SetNode(3 * i + corner + 1, Corner(*members[static_cast<std::size_t>(i)], corner));
        }
        selection->SetTriangle(i + 1, Poly_Triangle(3 * i + 1, 3 * i + 2, 3 * i + 3));
    }
    return selection;
}

} // namespace

// The records stay where they are: layers are lists of places, and each is written once into what the view
// takes over.
void AIS_Mesh::FillLayers() {
    triangles.clear();
    box.SetVoid();
    obb.SetVoid();
    std::map<std::uint32_t, Members> layers;
    for (const AISMESH& triangle : meshes) {
        layers[triangle.layer].push_back(&triangle);
        for (int corner = 0; corner < 3; ++corner) {
            box.Add(Corner(triangle, corner));
        }
    }
    for (const auto& [layer, members] : layers) {
        triangles.push_back({DrawingOf(members), SelectionOf(members), layer, members.size()});
    }
    if (!box.IsVoid()) {
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
    for (const MeshLayer& layer : triangles) {
        selection->Add(new Select3D_SensitiveTriangulation(owner, layer.selection, TopLoc_Location()));
    }
}

} // namespace mesh
