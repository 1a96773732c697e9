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

/// One triangle as it comes from a file.
struct AISMESH {
    float corners[3][3]; ///< x, y, z a corner: mm, object's frame, counter-clockwise seen from outside
    std::uint32_t layer; ///< layer that the triangle belongs to
};

/// What the host stores for one face; shared between copies of a mesh.
class MeshData {
public:
    std::vector<std::uint32_t> triangles; ///< indices of its triangle records
    Quantity_Color colour;                ///< colour of the face
};

/// A triangle mesh in the 3D view: one primitive array a layer, shaded in the object's colour, selected by
/// its triangles. To be used from the view's thread.
class MECHANISM_SHARED_TYPE AIS_Mesh : public AIS_InteractiveObject {
public:
    /// What one layer is drawn from.
    struct MeshLayer {
        opencascade::handle<Graphic3d_ArrayOfTriangles> drawing; ///< corners and normals, mm
        /// Uses the same corners; null until ComputeSelection.
        opencascade::handle<Select3D_SensitiveEntity> selection;
        std::uint64_t layer = 0;         ///< the records' layer
        std::uint64_t triangleCount = 0; ///< triangles of the layer
    };

    /// A mesh without triangles.
    MECHANISM_SHARED_RECORD AIS_Mesh();
    /// Shares handles and face meshes with the other and copies the records.
    MECHANISM_SHARED_RECORD AIS_Mesh(const AIS_Mesh& other);
    /// Leaves the other with no records, layers, face meshes, name or auxiliary object.
    MECHANISM_SHARED_RECORD AIS_Mesh(AIS_Mesh&& other);
    /// As the copy constructor.
    MECHANISM_SHARED_RECORD AIS_Mesh& operator=(const AIS_Mesh& other);
    /// Exchanges handles with the other and moves the rest.
    MECHANISM_SHARED_RECORD AIS_Mesh& operator=(AIS_Mesh&& other);
    MECHANISM_SHARED_RECORD ~AIS_Mesh() override;

    /// Replaces the records; the view shows them after the next redisplay.
    MECHANISM_SHARED_RECORD void SetMeshe(const std::vector<AISMESH>& meshes);
    /// The triangle records, writable; the view shows changes after the next redisplay.
    MECHANISM_SHARED_RECORD std::vector<AISMESH>& GetMeshs();
    /// The layers as they were last drawn.
    MECHANISM_SHARED_RECORD const std::vector<MeshLayer>& GetTriangles() const;
    /// Replaces what the host stores for each face.
    MECHANISM_SHARED_RECORD void SetFaceMeshesData(const std::vector<std::shared_ptr<MeshData>>& data);
    /// What the host stores for each face; the entries are shared, not copied.
    MECHANISM_SHARED_RECORD std::vector<std::shared_ptr<MeshData>> GetFaceMeshesData() const;

    // The run-time type is written out: Open CASCADE's macro would use the qualified name and export no
    // members.
    /// Base class in Open CASCADE's run-time types.
    using base_type = AIS_InteractiveObject;
    /// Name of the run-time type.
    MECHANISM_SHARED_RECORD static const char* get_type_name();
    /// Descriptor of the run-time type.
    MECHANISM_SHARED_RECORD static const opencascade::handle<Standard_Type>& get_type_descriptor();
    /// Descriptor of this object's run-time type.
    MECHANISM_SHARED_RECORD const opencascade::handle<Standard_Type>& DynamicType() const override;

protected:
    /// Draws every layer, whatever the mode.
    void Compute(const opencascade::handle<PrsMgr_PresentationManager>& manager,
                 const opencascade::handle<Graphic3d_Structure>& structure, int mode) override;
    /// Sets the colour in which all layers are shaded.
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
