#include <BRepGProp.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <filesystem>
#include <gtest/gtest.h>
#include <host/workpiece/Workpiece.h>
#include <support/SampleMechanisms.h>

namespace {

using sample::Place;

class Mounting : public testing::Test {
protected:
    std::unique_ptr<GenericEntityConfig> carrier = sample::Build(sample::TwoAxisRail(), 9, "rail");
    std::unique_ptr<GenericEntityConfig> arm = sample::Build(sample::SixAxisArm(), 10, "arm");
};

TEST_F(Mounting, ImpossibleOnesAreRefusedAndChangeNothing) {
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    Workpiece other;
    for (const Json::Value& place :
         {Place(101, 0), Place(101, 2), Place(101, -1), Place(77, 1), Json::Value()}) {
        EXPECT_THROW(carrier->AssembleOtherModel(&other, place), std::invalid_argument);
    }
    EXPECT_THROW(carrier->AssembleOtherModel(nullptr, Place(101, 1)), std::invalid_argument);
    EXPECT_THROW(arm->AssembleOtherModel(carrier.get(), Place(105, 0)), std::invalid_argument)
        << "in a circle";
    EXPECT_EQ(carrier->GetFlangeSize(), 1);
    EXPECT_EQ(other.GetMountingEntity(), nullptr);
    carrier->AssembleOtherModel(&other, Place(101, 1));
    EXPECT_EQ(carrier->GetFlangeSize(), 2) << "one place past the last is added";
}

TEST_F(Mounting, NeitherSideOutlivesTheOtherByAPointer) {
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    arm.reset();
    EXPECT_EQ(carrier->GetFlangeByIndex(0)->attached, nullptr);
    Workpiece other;
    carrier->AssembleOtherModel(&other, Place(101, 0));
    carrier.reset();
    EXPECT_EQ(other.GetMountingEntity(), nullptr);
}

TEST_F(Mounting, ATakenOverMechanismIsTheOneThatIsMounted) {
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    GenericEntityConfig heir(arm.get());
    EXPECT_EQ(carrier->GetFlangeByIndex(0)->attached, &heir);
    EXPECT_EQ(arm->GetLinkSize(), 0);
    EXPECT_EQ(arm->GetMountingEntity(), nullptr);
}

TEST_F(Mounting, APackageHoldsEveryModelWhereItStands) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) / "mechanism package";
    arm->GetLink(2)->models = {sample::Block(sample::Frame({500, 0, 0}, gp::DX(), gp::DY()))};
    ASSERT_TRUE(GenericEntityConfig::ExportEntityPkg(arm.get(), folder.string()));
    for (std::size_t i = 0; i < 6; ++i) {
        const ViewShape& model = *arm->GetLink(i)->models[0];
        TopoDS_Shape shape;
        ASSERT_TRUE(
            BRepTools::Read(shape, (folder / (model.GetId().ToString() + ".brep")).c_str(), BRep_Builder()));
        GProp_GProps written, expected;
        BRepGProp::VolumeProperties(shape, written);
        BRepGProp::VolumeProperties(model.Shape(), expected);
        EXPECT_NEAR(written.Mass(), expected.Mass(), 1e-6);
        EXPECT_LE(written.CentreOfMass().Distance(expected.CentreOfMass()), 1e-9) << i;
    }
    EXPECT_FALSE(GenericEntityConfig::ExportEntityPkg(arm.get(), (folder / "manifest.json").string()))
        << "in the way";
    fs::remove_all(folder);
}

} // namespace
