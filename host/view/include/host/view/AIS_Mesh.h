#pragma once

#include <AIS_InteractiveObject.hxx>
#include <Bnd_Box.hxx>
#include <Bnd_OBB.hxx>
#include <Graphic3d_ArrayOfTriangles.hxx>
#include <Select3D_SensitiveEntity.hxx>
#include <cstdint>
#include <gp_Trsf.hxx>
#include <host/tools/SharedRecord.h>
#include <memory>
#include <string>
#include <vector>

namespace mesh {

/// One triangle as it comes from a file: corners (mm, in the object's frame, counter-clockwise seen from
/// outside) and the layer it belongs to.
struct AISMESH {
    float corners[3][3];
    std::uint32_t layer;
};

/// What the host keeps for one face; shared between copies of a mesh.
class MeshData {
public:
    std::vector<std::uint32_t> triangles; ///< places in the list of records
    Quantity_Color colour;
};

/// A triangle mesh in the 3D view: one primitive array a layer, shaded in the object's colour, and selected
/// by its triangles. Used from the view's thread.
class MECHANISM_SHARED_TYPE AIS_Mesh : public AIS_InteractiveObject {
public:
    /// What one layer is drawn from.
    struct MeshLayer {
        opencascade::handle<Graphic3d_ArrayOfTriangles> drawing;
        opencascade::handle<Select3D_SensitiveEntity>
            selection; ///< over the same numbers; null until asked for
        std::uint64_t layer = 0;
        std::uint64_t triangleCount = 0;
    };

    MECHANISM_SHARED_RECORD AIS_Mesh();
    /// Shares handles and face meshes with the other, and copies the records.
    MECHANISM_SHARED_RECORD AIS_Mesh(const AIS_Mesh& other);
    /// Leaves the other with no records, layers, face meshes, name or auxiliary object.
    MECHANISM_SHARED_RECORD AIS_Mesh(AIS_Mesh&& other);
    MECHANISM_SHARED_RECORD AIS_Mesh& operator=(const AIS_Mesh& other);
    /// Exchanges handles with the other, and moves the rest.
    MECHANISM_SHARED_RECORD AIS_Mesh& operator=(AIS_Mesh&& other);
    MECHANISM_SHARED_RECORD ~AIS_Mesh() override;

    /// Replaces the records; the view shows them after the next redisplay.
    MECHANISM_SHARED_RECORD void SetMeshe(const std::vector<AISMESH>& meshes);
    /// The records themselves, writable.
    MECHANISM_SHARED_RECORD std::vector<AISMESH>& GetMeshs();
    /// The layers as they were last drawn.
    MECHANISM_SHARED_RECORD const std::vector<MeshLayer>& GetTriangles() const;
    MECHANISM_SHARED_RECORD void SetFaceMeshesData(const std::vector<std::shared_ptr<MeshData>>& data);
    MECHANISM_SHARED_RECORD std::vector<std::shared_ptr<MeshData>> GetFaceMeshesData() const;

    // The run-time type, spelt out: Open CASCADE's macro would take the qualified name and leave the library
    // without exported members.
    using base_type = AIS_InteractiveObject;
    MECHANISM_SHARED_RECORD static const char* get_type_name();
    MECHANISM_SHARED_RECORD static const opencascade::handle<Standard_Type>& get_type_descriptor();
    MECHANISM_SHARED_RECORD const opencascade::handle<Standard_Type>& DynamicType() const override;

protected:
    /// Draws every layer, whatever the mode.
    void Compute(const opencascade::handle<PrsMgr_PresentationManager>& manager,
                 const opencascade::handle<Graphic3d_Structure>& structure, int mode) override;
    void SetColor(const Quantity_Color& colour) override;
    /// Mode 0 selects the mesh by its triangles; there is no other.
    void ComputeSelection(const opencascade::handle<SelectMgr_Selection>& selection, int mode) override;

private:
    void FillLayers();

    gp_Trsf trsf;
    double factor = 1.0;
    std::string name;
    std::uint64_t reserved[2] = {};
    std::vector<AISMESH> meshes;
    Bnd_Box box;
    Bnd_OBB obb;
    opencascade::handle<Standard_Transient> auxHandle;
    std::vector<MeshLayer> triangles;
    std::vector<std::shared_ptr<MeshData>> faceMeshes;
};

} // namespace mesh
