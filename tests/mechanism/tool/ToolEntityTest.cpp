#include <gtest/gtest.h>
#include <host/tools/NozzleParam.h>
#include <host/tools/gpHandle.h>
#include <mechanism/ToolEntity.h>
#include <numbers>
#include <support/SampleTools.h>
#include <support/TrsfMatcher.h>

namespace {

std::shared_ptr<ToolEntity> MakeTorch() {
    auto [built, tool] = ToolEntity::CreateToolEntityByParameter(sample::TorchParameters());
    EXPECT_TRUE(built);
    return tool;
}

TEST(Torch, IsBuiltFromItsParameters) {
    const auto tool = MakeTorch();
    tool->Initial();
    const double bend = 22 * std::numbers::pi / 180;
    EXPECT_THAT(tool->GetToolTrsf(),
                IsTrsf(gpHandle::EulerToTrsf(LocEuler({60, 0, 330}, {0, bend, 0})), 1e-9, 1e-12));
    EXPECT_EQ(tool->GetMechanismType(), MechanismTool);
    EXPECT_EQ(tool->GetRootMdl()->GetName(), "默认焊枪");
    EXPECT_EQ(tool->GetRootMdl()->GetPrimitiveProperty().name, "默认焊枪");
    EXPECT_TRUE(tool->GetRootMdl()->IsDisplayed());
    EXPECT_EQ(tool->GetCheckCollisionGap(), 5.0);

    const auto parts = tool->GetFixMdls();
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(tool->GetEndToolMdl(), parts[0]);
    EXPECT_EQ(parts[2]->collisionTolerance, 20.0);
    ASSERT_EQ(parts[1]->GetLayers().size(), 3U);
    EXPECT_EQ(parts[1]->GetLayers()[2].second.transparency, 1.0) << "the guard is not seen";
    EXPECT_NEAR(parts[0]->GetLayers()[0].second.red, 0.5215686274509804, 1e-15);
    EXPECT_EQ(parts[0]->GetLayers()[0].second.code, 8);
    EXPECT_TRUE(parts[2]->IsDisplayed()) << "parts come into view with their root";
}

TEST(Torch, IsNotBuiltFromOtherTypesOrImpossibleNumbers) {
    for (const char* type : {"weldgun", "Spray", ""}) {
        Json::Value json = sample::TorchParameters();
        json["Type"] = type;
        const auto [built, tool] = ToolEntity::CreateToolEntityByParameter(json);
        EXPECT_FALSE(built);
        EXPECT_TRUE(tool->GetRootMdl().IsNull());
        EXPECT_TRUE(MakeTorch()->UpdataToolParameterData(json)) << "an update takes no notice of other types";
    }
    Json::Value tight = sample::TorchParameters();
    tight["tcp_z"] = 60.0;
    EXPECT_FALSE(ToolEntity::CreateToolEntityByParameter(tight).first);
    tight["tcp_z"] = -1.0;
    EXPECT_THROW(ToolEntity::CreateToolEntityByParameter(tight), std::invalid_argument);
}

TEST(Torch, IsRebuiltInPlaceUnderTheSameIdentities) {
    const auto tool = MakeTorch();
    tool->SetRootMdlTrsf(gpHandle::EulerToTrsf(LocEuler({5, 6, 7}, {0.1, 0, 0})));
    const gp_Trsf placement = tool->GetRootMdl()->LocalTransformation();
    const auto before = tool->GetFixMdls();
    Json::Value longer = sample::TorchParameters();
    longer["tcp_z"] = 400.0;
    ASSERT_TRUE(tool->UpdataToolParameterData(longer));
    const auto after = tool->GetFixMdls();
    ASSERT_EQ(after.size(), 3U);
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_NE(after[i], before[i]);
        EXPECT_EQ(after[i]->GetId(), before[i]->GetId());
        EXPECT_EQ(after[i]->GetHashKey(), before[i]->GetHashKey());
    }
    EXPECT_EQ(tool->GetEndToolMdl(), after[0]);
    EXPECT_EQ(tool->GetRootMdl()->Children().Size(), 3);
    EXPECT_THAT(tool->GetRootMdl()->LocalTransformation(), IsTrsf(placement, 0, 0));
    EXPECT_EQ(tool->GetFlangeByIndex(0)->GetTrsf().TranslationPart().Z(), 400);
    EXPECT_EQ(tool->GetParameters()["tcp_z"].asDouble(), 400);

    tool->AddFixMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    EXPECT_FALSE(tool->UpdataToolParameterData(sample::TorchParameters())) << "four parts are not a torch's";
    EXPECT_EQ(tool->GetParameters()["tcp_z"].asDouble(), 400);
}

TEST(Torch, ADefaultToolHasNothingAndStaysQuiet) {
    ToolEntity tool;
    EXPECT_THAT(tool.GetToolTrsf(), IsTrsf(gp_Trsf(), 0, 0));
    tool.SetSimulatorState(true);
    tool.Initial();
    EXPECT_FALSE(tool.UpdataToolParameterData(sample::TorchParameters()));
    Json::Value out;
    tool.ExportParaToJson(out);
    EXPECT_EQ(out.size(), 2U);

    const auto torch = MakeTorch();
    torch->SetSimulatorState(true);
    EXPECT_EQ(torch->GetEndToolMdl()->simulationTolerance, 0.0);
    torch->SetSimulatorState(false);
    EXPECT_EQ(torch->GetEndToolMdl()->simulationTolerance, 5.0);
}

TEST(Torch, ComesBackFromItsDocument) {
    const auto tool = MakeTorch();
    tool->SetHashIndex(808);
    tool->SetToolWorkType(static_cast<ToolEntity::ToolWorkType>(17));
    const Json::Value json = tool->ToJson("");
    const auto other = MakeTorch();
    other->LoadFromJson(json);
    EXPECT_EQ(other->ToJson(""), tool->ToJson("")) << "a number of no meaning here is kept";
    EXPECT_EQ(other->GetEndToolMdl(), other->GetFixMdls()[0]);

    Json::Value bad = json;
    bad["WorkType"] = "painting";
    bad["HashID"] = 5;
    EXPECT_THROW(other->LoadFromJson(bad), std::invalid_argument);
    EXPECT_EQ(other->GetHashIndex(), 808U) << "refused as a whole";
    bad = json;
    bad["type"] = 1;
    EXPECT_THROW(other->LoadFromJson(bad), std::invalid_argument);
    bad = json;
    bad.removeMember("WorkType");
    other->LoadFromJson(bad);
    EXPECT_EQ(other->GetToolWorkType(), 0);
}

TEST(Torch, NamesItsPartsAfterItself) {
    const auto tool = MakeTorch();
    tool->SetName("T1");
    tool->UpdateLinkModelNames();
    EXPECT_EQ(tool->GetFixMdls()[1]->GetName(), "工具:T1 - 基座");
}

} // namespace
