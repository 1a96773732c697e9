#include <BRepGProp.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <host/workpiece/Workpiece.h>
#include <json/reader.h>
#include <support/SampleMechanisms.h>
#include <support/TrsfMatcher.h>

namespace {

constexpr double Mm = 1e-9;
constexpr double Entries = 1e-12;

Json::Value Place(std::uint64_t link, int index) {
    Json::Value json;
    json["link_hash"] = Json::UInt64(link);
    json["install_index"] = index;
    return json;
}

class Mounting : public testing::Test {
protected:
    const sample::Mechanism rail = sample::TwoAxisRail();
    std::unique_ptr<GenericEntityConfig> carrier = sample::Build(rail, 9, "rail");
    std::unique_ptr<GenericEntityConfig> arm = sample::Build(sample::SixAxisArm(), 10, "arm");
};

TEST_F(Mounting, WhatIsMountedFollowsItsCarrierUntilItIsTakenOff) {
    carrier->AssembleOtherModel(arm.get(), Place(101, 0));
    EXPECT_EQ(arm->GetMountingEntity(), carrier.get());
    const std::vector<double> values = {1200, 250};
    carrier->SetCurrentValue(values, 0);
    carrier->ForwardTrsf(9, true, true);
    EXPECT_THAT(arm->GetRootMdlTrsf(), IsTrsf(rail.FlangeAt(values), Mm, Entries));
    EXPECT_THAT(arm->GetParentAssembleTrsf(), IsTrsf(rail.FlangeAt(values), Mm, Entries));
    EXPECT_THAT(arm->GetCurrentTrsfTool0(),
                IsTrsf(rail.FlangeAt(values) * sample::SixAxisArm().flange, Mm, Entries));

    carrier->DisassembleModel(arm.get());
    EXPECT_EQ(arm->GetMountingEntity(), nullptr);
    EXPECT_EQ(carrier->GetFlangeByIndex(0)->attached, nullptr);
    carrier->Reset();
    EXPECT_THAT(arm->GetRootMdlTrsf(), IsTrsf(rail.FlangeAt(values), Mm, Entries)) << "it stays where it was";
}

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
    EXPECT_EQ(heir.GetLinkSize(), 6);
    EXPECT_EQ(heir.GetHashIndex(), 10U);
    EXPECT_EQ(arm->GetLinkSize(), 0);
    EXPECT_EQ(arm->GetMountingEntity(), nullptr);
}

TEST_F(Mounting, APackageHoldsTheManifestAndEveryModel) {
    namespace fs = std::filesystem;
    EXPECT_FALSE(GenericEntityConfig::ExportEntityPkg(arm.get(), ""));
    const fs::path folder = fs::path(testing::TempDir()) / "mechanism package";
    fs::remove_all(folder);
    ASSERT_TRUE(GenericEntityConfig::ExportEntityPkg(arm.get(), folder.string()));
    Json::Value manifest;
    std::ifstream(folder / "manifest.json") >> manifest;
    ASSERT_EQ(manifest["models"].size(), 6U);
    for (Json::ArrayIndex i = 0; i < 6; ++i) {
        EXPECT_EQ(manifest["models"][i]["id"].asString(), arm->GetLink(i)->models[0]->GetId().ToString());
        TopoDS_Shape shape;
        BRep_Builder builder;
        ASSERT_TRUE(
            BRepTools::Read(shape, (folder / manifest["models"][i]["file"].asString()).c_str(), builder));
        GProp_GProps volume;
        BRepGProp::VolumeProperties(shape, volume);
        EXPECT_NEAR(volume.Mass(), 60.0 * 80 * 100, 1e-6);
    }
    std::ofstream(folder / "file") << "in the way";
    EXPECT_FALSE(GenericEntityConfig::ExportEntityPkg(arm.get(), (folder / "file").string()));
    fs::remove_all(folder);
}

} // namespace
