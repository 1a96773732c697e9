#include <gtest/gtest.h>
#include <host/tools/AIS_Mesh.h>
#include <scene/Viewer.h>

// Run under a display of its own, see CMakeLists.txt.

namespace {

constexpr int Width = 200;
constexpr int Height = 150;

struct MeshOnScreen : testing::Test {
    Quantity_Color Pixel(int x, int y) { return viewer.Grab()->PixelColor(x, y).GetRGB(); }
    Quantity_Color Middle() { return Pixel(Width / 2, Height / 2); }

    cell::Viewer viewer{Width, Height};
};

TEST_F(MeshOnScreen, IsDrawnColouredAndFoundUnderThePointer) {
    const Quantity_Color background = Middle();
    const Quantity_Color corner = Pixel(1, 1);
    const opencascade::handle<mesh::AIS_Mesh> mesh = new mesh::AIS_Mesh;
    // Two layers that face the viewer side by side, one past either side of the middle.
    mesh->SetMeshe({{{{-90, -80, -60}, {90, 80, -60}, {0, 0, 90}}, 1},
                    {{{-90, -80, -60}, {-80, -70, -60}, {0, 0, 90}}, 2}});
    viewer.Context()->Display(mesh, 0, 0, Standard_False);
    Bnd_Box box;
    box.Update(-100, -100, -100, 100, 100, 100);
    viewer.LookAt(box);
    ASSERT_EQ(mesh->GetTriangles().size(), 2U);
    EXPECT_FALSE(Middle().IsEqual(background));
    EXPECT_TRUE(Pixel(1, 1).IsEqual(corner)) << "the mesh is everywhere";

    viewer.Context()->SetColor(mesh, Quantity_NOC_RED, Standard_False);
    EXPECT_GT(Middle().Red(), 2 * Middle().Green());
    viewer.Context()->SetColor(mesh, Quantity_NOC_GREEN, Standard_False);
    EXPECT_GT(Middle().Green(), 2 * Middle().Red());

    const auto& view = viewer.Context()->CurrentViewer()->ActiveViewIterator().Value();
    viewer.Context()->MoveTo(Width / 2, Height / 2, view, Standard_False);
    EXPECT_TRUE(viewer.Context()->HasDetected());
    viewer.Context()->MoveTo(1, 1, view, Standard_False);
    EXPECT_FALSE(viewer.Context()->HasDetected());
}

} // namespace
