#include <host/view/AIS_Mesh.h>

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace mesh {

// Records are copied as blocks of memory, by the million.
static_assert(std::is_trivially_copyable_v<AISMESH>);

AIS_Mesh::AIS_Mesh() : AIS_InteractiveObject(PrsMgr_TOP_AllView) {}

AIS_Mesh::AIS_Mesh(const AIS_Mesh& other) = default;

// The base has no move of its own: its part is copied.
// NOLINTBEGIN(performance-move-constructor-init)
AIS_Mesh::AIS_Mesh(AIS_Mesh&& other)
    : AIS_InteractiveObject(other), trsf(other.trsf), factor(other.factor),
      name(std::exchange(other.name, {})), reserved{other.reserved[0], other.reserved[1]},
      meshes(std::exchange(other.meshes, {})), box(other.box), obb(other.obb),
      auxHandle(std::exchange(other.auxHandle, {})), triangles(std::exchange(other.triangles, {})),
      faceMeshes(std::exchange(other.faceMeshes, {})) {}
// NOLINTEND(performance-move-constructor-init)

AIS_Mesh& AIS_Mesh::operator=(const AIS_Mesh& other) = default;

AIS_Mesh& AIS_Mesh::operator=(AIS_Mesh&& other) {
    AIS_InteractiveObject::operator=(other);
    trsf = other.trsf;
    factor = other.factor;
    std::copy_n(other.reserved, std::size(reserved), reserved);
    box = other.box;
    obb = other.obb;
    if (this != &other) {
        name = std::exchange(other.name, {});
        meshes = std::exchange(other.meshes, {});
        std::swap(auxHandle, other.auxHandle);
        triangles = std::exchange(other.triangles, {});
        faceMeshes = std::exchange(other.faceMeshes, {});
    }
    return *this;
}

AIS_Mesh::~AIS_Mesh() = default;

void AIS_Mesh::SetMeshe(const std::vector<AISMESH>& newMeshes) { meshes = newMeshes; }

std::vector<AISMESH>& AIS_Mesh::GetMeshs() { return meshes; }

const std::vector<AIS_Mesh::MeshLayer>& AIS_Mesh::GetTriangles() const { return triangles; }

void AIS_Mesh::SetFaceMeshesData(const std::vector<std::shared_ptr<MeshData>>& data) { faceMeshes = data; }

std::vector<std::shared_ptr<MeshData>> AIS_Mesh::GetFaceMeshesData() const { return faceMeshes; }

const char* AIS_Mesh::get_type_name() { return "AIS_Mesh"; }

const opencascade::handle<Standard_Type>& AIS_Mesh::get_type_descriptor() {
    static const opencascade::handle<Standard_Type> type =
        Standard_Type::Register(typeid(AIS_Mesh).name(), get_type_name(), sizeof(AIS_Mesh),
                                AIS_InteractiveObject::get_type_descriptor());
    return type;
}

const opencascade::handle<Standard_Type>& AIS_Mesh::DynamicType() const { return get_type_descriptor(); }

} // namespace mesh
