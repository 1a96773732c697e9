#include <BRepBndLib.hxx>
#include <gtest/gtest.h>
#include <host/view/ViewShapeUtil.h>
#include <support/SampleMechanisms.h>

// Without a context every shape keeps its own state; nothing here has a display.

namespace {

TEST(ViewState, HidingAnEntityHidesItsParts) {
    const auto entity = sample::Build(sample::SixAxisArm(), 3);
    entity->AddFixMdl(sample::Block(gp_Trsf()));
    entity->GetFixMdls()[0]->Display();
    entity->GetLink(4)->models[0]->Display();
    entity->Hide(3);
    EXPECT_FALSE(entity->GetFixMdls()[0]->IsDisplayed());
    EXPECT_FALSE(entity->GetLink(4)->models[0]->IsDisplayed());
    const opencascade::handle<ShapeEntity> newRoot = new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid());
    entity->SetRootMdl(newRoot);
    EXPECT_EQ(newRoot->Children().Size(), 1) << "fixed parts hang below the root that is there";
    entity->SetRootMdl(nullptr);
    EXPECT_EQ(newRoot->Children().Size(), 0);
}

TEST(ViewState, HidingAParentHidesItsChildren) {
    const auto parent = sample::Block(gp_Trsf());
    const auto child = sample::Block(gp_Trsf());
    parent->AddChild(child);
    parent->Display();
    parent->Hide();
    EXPECT_FALSE(child->IsDisplayed());
    child->RedisplayShape(false, false);
    EXPECT_TRUE(child->IsDisplayed()) << "a hidden shape is still known to the view";
    parent->RemoveFromView();
    child->RedisplayShape(false, false);
    EXPECT_FALSE(child->IsDisplayed()) << "a removed one is not";
}

TEST(ViewState, SetTransformationPlacesInTheWorldBelowAParent) {
    gp_Trsf shift, turn;
    shift.SetTranslation(gp_Vec(10, 20, 30));
    turn.SetRotation(gp::OZ(), 1);
    const auto parent = sample::Block(gp_Trsf());
    const auto child = sample::Block(gp_Trsf());
    parent->AddChild(child);
    parent->SetTransformation(shift * turn, true);
    child->SetTransformation(shift, true);
    EXPECT_NEAR(child->Transformation().TranslationPart().X(), 10, 1e-12);
    EXPECT_NEAR(child->Transformation().Value(1, 1), 1, 1e-12);
}

TEST(ViewState, TriadIsAtItsFrame) {
    const gp_Ax2 frame(gp_Pnt(100, 0, 0), gp_Dir(1, 0, 0), gp_Dir(0, 0, 1));
    Bnd_Box box;
    BRepBndLib::AddOptimal(ViewShapeUtil::GenDirModel(frame, 50)->Shape(), box);
    EXPECT_NEAR(box.CornerMax().X(), 150, 1) << "Z arrow along world X";
    EXPECT_NEAR(box.CornerMax().Z(), 50, 1) << "X arrow along world Z";
    EXPECT_THROW(ViewShapeUtil::GenDirModel(frame, 0), std::invalid_argument);
}

} // namespace
