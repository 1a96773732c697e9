#include "../cell/Documents.h"
#include <gtest/gtest.h>

#include <cell/model/SystemValues.h>
#include <host/view/AIS_Mesh.h>
#include <scene/Scene.h>
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

/// How many poses of the path show its colour where they stand in the world now.
int PosesInSight(cell::Viewer& viewer, const cell::ToolPath& path) {
    const opencascade::handle<Image_AlienPixMap> picture = viewer.Grab();
    int count = 0;
    for (const auto& [x, y, z, dx, dy, dz] : cell::InWorld(*path.workpiece, cell::WorkUp(path).poses)) {
        int column = 0;
        int row = 0;
        viewer.View()->Convert(x, y, z, column, row);
        const Quantity_Color colour = picture->PixelColor(column, row).GetRGB();
        count += colour.Red() > 3 * colour.Green() && colour.Red() > 2 * colour.Blue() ? 1 : 0;
    }
    return count;
}

TEST(SceneOnScreen, ToolPathStaysOnTheWorkpieceThatThePositionerTurns) {
    Json::Value json = ExampleCell("rail_and_positioner.json");
    json["motions"] = Parsed(R"([{"name": "rim", "kind": "tool_path", "workpiece": "flanged_pipe",
        "edge": 13, "spacing_mm": 5, "smooth_mm": 5, "keep_every": 1, "tolerance_mm": 0.5}])");
    const Folder folder;
    const cell::Cell cell = cell::Cell::Load(folder.WriteJson("cell.json", json));
    const cell::ToolPath& path = cell.ToolPaths().front();
    cell::Viewer viewer(800, 600);
    cell::Scene scene(viewer);
    scene.Show(*path.workpiece);
    scene.ShowPaths(cell, {});
    viewer.LookAt(cell::Scene::ExtentOf(*path.workpiece));
    const int straight = PosesInSight(viewer, path);
    EXPECT_GT(straight, 20);
    GrpState tilted = cell.FindKeyState("above_start")->state;
    MoveTo(cell.Systems().front(), tilted);
    EXPECT_LT(PosesInSight(viewer, path), straight / 8) << "the test cannot tell one place from the other";
    scene.Follow();
    EXPECT_GT(PosesInSight(viewer, path), straight / 4) << "its lower half hides itself when it is tilted";
}

TEST(SceneOnScreen, ArmThatBeginsAboveItsOriginStandsOnAColumn) {
    Json::Value json = ReadDocument(Example("arms/kuka_kr16_2.json"));
    json["joints"][0]["origin_mm"][2] = 450; // along its own axis: the same arm
    const Folder folder;
    const cell::Cell cell = cell::Cell::Load(folder.WriteJson("arm.json", json));
    cell::Viewer viewer(Width, Height);
    cell::Scene scene(viewer);
    scene.Show(cell);
    EXPECT_GT(cell::Scene::ExtentOf(*cell.Robots().front()).CornerMin().Z(), 440);
    EXPECT_NEAR(scene.Extent().CornerMin().Z(), 0, 1);
}

} // namespace
