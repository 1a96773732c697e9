#include <SelectMgr_Selection.hxx>
#include <gtest/gtest.h>
#include <host/view/AIS_Mesh.h>

namespace {

using mesh::AISMESH;

AISMESH Triangle(float z, std::uint32_t layer) { return {{{0, 0, z}, {10, 0, z}, {0, 10, z}}, layer}; }

/// Lets the view's hooks be called without a view.
struct Mesh : mesh::AIS_Mesh {
    using mesh::AIS_Mesh::AIS_Mesh;
    using mesh::AIS_Mesh::ComputeSelection;
};

mesh::AIS_Mesh Sample() {
    mesh::AIS_Mesh sample;
    sample.SetMeshe({Triangle(0, 1), Triangle(5, 2), Triangle(7, 1)});
    sample.SetFaceMeshesData({std::make_shared<mesh::MeshData>()});
    return sample;
}

TEST(Mesh, RegistersItsRunTimeType) {
    const opencascade::handle<AIS_InteractiveObject> object = new mesh::AIS_Mesh;
    EXPECT_STREQ(object->DynamicType()->Name(), "AIS_Mesh");
    EXPECT_TRUE(object->IsKind(STANDARD_TYPE(AIS_InteractiveObject)));
    EXPECT_EQ(object->DynamicType()->Parent(), STANDARD_TYPE(AIS_InteractiveObject));
    EXPECT_FALSE(opencascade::handle<mesh::AIS_Mesh>::DownCast(object).IsNull());
    EXPECT_EQ(object->TypeOfPresentation3d(), PrsMgr_TOP_AllView);
}

TEST(Mesh, CopyingSharesFacesAndMovingEmptiesTheSource) {
    mesh::AIS_Mesh original = Sample();
    mesh::AIS_Mesh copy(original);
    copy.GetFaceMeshesData().front()->triangles.push_back(5);
    EXPECT_EQ(original.GetFaceMeshesData().front()->triangles.size(), 1U);
    copy.GetMeshs().pop_back();
    EXPECT_EQ(original.GetMeshs().size(), 3U);

    const mesh::AIS_Mesh moved(std::move(copy));
    EXPECT_EQ(moved.GetFaceMeshesData(), original.GetFaceMeshesData());
    EXPECT_TRUE(copy.GetMeshs().empty() && copy.GetTriangles().empty() && copy.GetFaceMeshesData().empty());

    mesh::AIS_Mesh target;
    target = std::move(original);
    EXPECT_EQ(target.GetMeshs().size(), 3U);
    EXPECT_TRUE(original.GetMeshs().empty() && original.GetFaceMeshesData().empty());
}

TEST(Mesh, SettingItsOwnListsChangesNothing) {
    mesh::AIS_Mesh sample = Sample();
    sample.SetMeshe(sample.GetMeshs());
    EXPECT_EQ(sample.GetMeshs().size(), 3U);
    mesh::AIS_Mesh& itself = sample;
    sample = itself;
    sample = std::move(itself);
    EXPECT_EQ(sample.GetMeshs().size(), 3U);
    EXPECT_EQ(sample.GetFaceMeshesData().size(), 1U);
}

TEST(Mesh, DrawsOneArrayPerLayerAndSelectsTheSameTriangles) {
    opencascade::handle<Mesh> sample = new Mesh;
    sample->SetMeshe(
        {Triangle(0, 1), Triangle(5, 2), Triangle(7, 1), {{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, 2}});
    opencascade::handle<SelectMgr_Selection> selection = new SelectMgr_Selection(0);
    sample->ComputeSelection(selection, 0);
    ASSERT_EQ(selection->Entities().Size(), 2);
    ASSERT_EQ(sample->GetTriangles().size(), 2U);
    const auto& first = sample->GetTriangles().front();
    EXPECT_EQ(first.layer, 1U);
    EXPECT_EQ(first.triangleCount, 2U);
    EXPECT_EQ(first.drawing->VertexNumber(), 6);
    EXPECT_TRUE(first.drawing->VertexNormal(1).IsEqual(gp::DZ(), 1e-6));
    EXPECT_EQ(first.drawing->Vertice(4).Z(), 7);
    EXPECT_EQ(first.selection->NbSubElements(), 2);
    selection = new SelectMgr_Selection(1);
    sample->ComputeSelection(selection, 1);
    EXPECT_TRUE(selection->IsEmpty());
}

} // namespace
