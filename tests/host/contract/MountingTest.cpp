#include <BRepGProp.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <host/tools/gpHandle.h>
#include <host/workpiece/Workpiece.h>
#include <json/json.h>
#include <support/SampleMechanisms.h>
#include <support/Thrown.h>

namespace {

using sample::Place;

bool IsSame(const gp_Trsf& a, const gp_Trsf& b) {
    constexpr double Rounding = 1e-9; // metres through a few products
    return gpHandle::IsSameTrsf(a, b, Rounding);
}

class Mounting : public testing::Test {
protected:
    std::unique_ptr<GenericEntityConfig> carrier = sample::Build(sample::TwoAxisRail(), 9, "rail");
    std::unique_ptr<GenericEntityConfig> arm = sample::Build(sample::SixAxisArm(), 10, "arm");
};

TEST_F(Mounting, ImpossibleMountingIsRefusedAndChangesNothing) {
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
    arm.reset();
    EXPECT_THAT(Thrown([&] { carrier->AssembleOtherModel(&other, Place(100, 0)); }),
                testing::StartsWith("link_hash: 100, expected 101, the link of flange 0"));
    carrier->AssembleOtherModel(&other, Place(101, 1));
    EXPECT_EQ(carrier->GetFlangeSize(), 2) << "one place past the last is added";
    Workpiece inner;
    carrier->AssembleOtherModel(&inner, Place(100, 2));
    EXPECT_TRUE(IsSame(inner.GetRootMdlTrsf(), carrier->GetLink(0)->worldTrsf))
        << "in the inner link's frame";
}

TEST_F(Mounting, LoadingFlangesKeepsMountedEntitiesByIndex) {
    Workpiece extra;
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    carrier->AssembleOtherModel(&extra, Place(101, 1));
    Json::Value json = carrier->DataToJson("");
    json["flanges"].resize(1);
    json["flanges"][0]["trsf"][3] = 25.0;
    carrier->LoadFromJson(json);
    EXPECT_EQ(carrier->GetFlangeByIndex(0)->attached, arm.get());
    EXPECT_EQ(arm->GetMountingEntity(), carrier.get());
    EXPECT_EQ(extra.GetMountingEntity(), nullptr);
    carrier.reset();
    EXPECT_TRUE(IsSame(extra.GetParentAssembleTrsf(), extra.GetRootMdlTrsf()));
}

TEST_F(Mounting, StructureCodeAndCouplingAreLoaded) {
    arm->SetArmStructureCode(1);
    arm->SetCouplingRobot(true);
    GenericEntityConfig back;
    back.LoadFromJson(arm->DataToJson(""));
    EXPECT_EQ(back.GetArmStructureCode(), 1);
    EXPECT_TRUE(back.IsCouplingRobot());
    const std::vector<double> values = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    arm->ForwardTrsfWithValue(values, false, false);
    back.ForwardTrsfWithValue(values, false, false);
    EXPECT_TRUE(IsSame(back.GetCurrentTrsfTool0(), arm->GetCurrentTrsfTool0()));
}

TEST_F(Mounting, DestroyingEitherSideEndsTheMounting) {
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    arm.reset();
    EXPECT_EQ(carrier->GetFlangeByIndex(0)->attached, nullptr);
    Workpiece other;
    carrier->AssembleOtherModel(&other, Place(101, 0));
    carrier.reset();
    EXPECT_EQ(other.GetMountingEntity(), nullptr);
}

TEST_F(Mounting, TakingOverAMechanismTakesOverItsMounting) {
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    GenericEntityConfig heir(arm.get());
    EXPECT_EQ(carrier->GetFlangeByIndex(0)->attached, &heir);
    EXPECT_EQ(arm->GetLinkSize(), 0);
    EXPECT_EQ(arm->GetMountingEntity(), nullptr);
}

TEST_F(Mounting, PackageHoldsEveryModelInPlace) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(testing::TempDir()) / "mechanism package";
    arm->GetLink(4)->models[0]->SetId(arm->GetLink(3)->models[0]->GetId());
    arm->SetRootMdl(sample::Block(gp_Trsf()));
    arm->GetLink(2)->models = {sample::Block(sample::Frame({500, 0, 0}, gp::DX(), gp::DY()))};
    ASSERT_TRUE(GenericEntityConfig::ExportEntityPkg(arm.get(), folder.string()));
    Json::Value manifest;
    std::ifstream(folder / "manifest.json") >> manifest;
    EXPECT_TRUE(fs::exists(folder / manifest["root"]["file"].asString()));
    for (std::size_t i = 0; i < 6; ++i) {
        const ViewShape& model = *arm->GetLink(i)->models[0];
        TopoDS_Shape shape;
        const std::string file = manifest["models"][static_cast<Json::ArrayIndex>(i)]["file"].asString();
        ASSERT_TRUE(BRepTools::Read(shape, (folder / file).c_str(), BRep_Builder()));
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
