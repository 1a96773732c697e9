#include "Harness.h"

#include <Graphic3d_ArrayOfTriangles.hxx>
#include <Graphic3d_Group.hxx>
#include <Graphic3d_Structure.hxx>
#include <Graphic3d_StructureManager.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <PrsMgr_PresentationManager.hxx>
#include <cmath>
#include <host/view/AIS_Mesh.h>
#include <memory>

namespace {

using bench::Row;
using bench::Work;

using Array = opencascade::handle<Graphic3d_ArrayOfTriangles>;

constexpr double Rounding = 1e-5;

/// A driver that never sees a display takes primitive arrays as one that does.
struct Mesh : mesh::AIS_Mesh {
    using mesh::AIS_Mesh::Compute;

    explicit Mesh(int rows) {
        const auto corner = [rows](int i, int j, float* to) {
            const float scale = 1000.0F / static_cast<float>(rows);
            to[0] = scale * static_cast<float>(i);
            to[1] = scale * static_cast<float>(j);
            to[2] = 50.0F * std::sin(0.01F * to[0]) * std::cos(0.01F * to[1]);
        };
        for (int i = 0; i < rows; ++i) {
            for (int j = 0; j < rows; ++j) {
                for (const int half : {0, 1}) {
                    mesh::AISMESH triangle{};
                    corner(i + half, j + half, triangle.corners[0]);
                    corner(i + 1, j, triangle.corners[1 + half]);
                    corner(i, j + 1, triangle.corners[2 - half]);
                    triangle.layer = i < rows / 2 ? 1 : 2;
                    GetMeshs().push_back(triangle);
                }
            }
        }
    }

    opencascade::handle<OpenGl_GraphicDriver> driver = new OpenGl_GraphicDriver({}, Standard_False);
    opencascade::handle<Graphic3d_StructureManager> manager = new Graphic3d_StructureManager(driver);
    opencascade::handle<Graphic3d_Structure> structure = new Graphic3d_Structure(manager);
};

Array Bare(const std::vector<mesh::AISMESH>& records) {
    const Array array =
        new Graphic3d_ArrayOfTriangles(3 * static_cast<int>(records.size()), 0, Standard_True);
    for (const mesh::AISMESH& record : records) {
        const auto point = [&](int i) {
            return Graphic3d_Vec3(record.corners[i][0], record.corners[i][1], record.corners[i][2]);
        };
        Graphic3d_Vec3 normal = Graphic3d_Vec3::Cross(point(1) - point(0), point(2) - point(0));
        normal.Normalize();
        for (const int i : {0, 1, 2}) {
            const Graphic3d_Vec3 at = point(i);
            array->AddVertex(at.x(), at.y(), at.z(), normal.x(), normal.y(), normal.z());
        }
    }
    return array;
}

/// Some numbers of arrays in a row, corners and normals.
std::vector<double> Numbers(const std::vector<Array>& arrays) {
    std::vector<double> numbers;
    for (const Array& array : arrays) {
        for (int i = 1; i <= array->VertexNumber(); ++i) {
            const gp_XYZ at = array->Vertice(i).XYZ() + array->VertexNormal(i).XYZ();
            numbers.push_back(at.X() + 2 * at.Y() + 3 * at.Z());
        }
    }
    return numbers;
}

Work Display(bool quick) {
    const opencascade::handle<Mesh> mesh = new Mesh(quick ? 50 : 707); // 999 698 triangles
    auto bare = std::make_shared<Array>();
    return {{[mesh] {
                mesh->structure->Clear();
                mesh->Compute({}, mesh->structure, 0);
            }},
            {[mesh, bare] {
                bare->Nullify();
                *bare = Bare(mesh->GetMeshs());
            }},
            [mesh, bare] {
                const auto& layers = mesh->GetTriangles();
                return bench::Difference(Numbers({layers[0].drawing, layers[1].drawing}), Numbers({*bare}),
                                         Rounding * 1000);
            }};
}

} // namespace

std::vector<Row> bench::MeshRows() {
    return {{"mesh_display", "filling a bare Graphic3d_ArrayOfTriangles", 1.15, Display}};
}
