#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <host/tools/NozzleParam.h>
#include <host/tools/ShapeHandle.h>
#include <numbers>
#include <support/Mechanism.h>

namespace {

class Torch : public testing::Test {
protected:
    static Json::Value With(const char* key, const Json::Value& value) {
        Json::Value parameters = sample::TorchParameters();
        parameters[key] = value;
        return parameters;
    }

    const std::shared_ptr<ToolEntity> tool =
        ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
};

TEST_F(Torch, IsBuiltFromItsParameters) {
    tool->Initial();
    EXPECT_THAT(tool->GetToolTrsf(), IsTrsf(sample::TorchCentre()));
    EXPECT_EQ(tool->GetRootMdl()->GetPrimitiveProperty().name, "默认焊枪");
    EXPECT_EQ(tool->GetCheckCollisionGap(), 5.0);
    const auto parts = tool->GetFixMdls();
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_EQ(tool->GetEndToolMdl(), parts[0]);
    EXPECT_LT(ShapeHandle::GetAreaOrVol(parts[0]->Shape()), 4 * 4 * std::numbers::pi * 8) << "the tip";
    TopTools_IndexedMapOfShape front;
    TopExp::MapShapes(parts[1]->Shape(), TopAbs_SOLID, front);
    EXPECT_EQ(front.Extent(), 3) << "nozzle, neck and guard";
    for (const auto& [solid, layer] : parts[1]->GetLayers()) {
        EXPECT_TRUE(front.Contains(solid));
    }
    EXPECT_EQ(parts[2]->collisionTolerance, 20.0);
    EXPECT_EQ(parts[2]->GetLayers()[0].second.transparency, 0.0);
    ASSERT_EQ(parts[1]->GetLayers().size(), 3U);
    EXPECT_EQ(parts[1]->GetLayers()[0].second.transparency, 0.0);
    EXPECT_EQ(parts[1]->GetLayers()[2].second.transparency, 1.0) << "the guard is not seen";
    EXPECT_NEAR(parts[0]->GetLayers()[0].second.red, 0.5215686274509804, 1e-15);
    EXPECT_NEAR(parts[0]->GetLayers()[0].second.green, 0.35294117647058826, 1e-15);
    EXPECT_EQ(parts[0]->GetLayers()[0].second.blue, 0.0);
    EXPECT_EQ(parts[0]->GetLayers()[0].second.code, 8);
    EXPECT_TRUE(parts[0]->GetLayers()[0].first.IsSame(parts[0]->Shape()));
    EXPECT_TRUE(parts[2]->IsDisplayed()) << "parts come into view with their root";
    tool->SetSimulatorState(true);
    EXPECT_EQ(tool->GetEndToolMdl()->simulationTolerance, 0.0);
    tool->SetSimulatorState(false);
    EXPECT_EQ(tool->GetEndToolMdl()->simulationTolerance, 5.0);
}

TEST_F(Torch, UpdateAcceptsAnyRootModelOrNone) {
    gp_Trsf place;
    place.SetTranslation(gp_Vec(1, 2, 3));
    for (const opencascade::handle<ViewShape>& root :
         {opencascade::handle<ViewShape>(new ViewShape(TopoDS_Shape())), opencascade::handle<ViewShape>()}) {
        tool->SetRootMdl(root);
        tool->SetRootMdlTrsf(place);
        EXPECT_TRUE(tool->UpdataToolParameterData(sample::TorchParameters()));
        EXPECT_EQ(tool->GetFixMdls().size(), 3U);
        EXPECT_TRUE(root.IsNull() || root->LocalTransformation().TranslationPart().Z() == 3);
    }
    const Json::Value before = tool->GetParameters();
    tool->Initial();
    EXPECT_EQ(tool->GetParameters(), before) << "reading the work type adds no key";
}

TEST_F(Torch, OtherTypesAndImpossibleNumbersAreNotBuilt) {
    for (const char* type : {"weldgun", "Spray", ""}) {
        const auto [built, other] = ToolEntity::CreateToolEntityByParameter(With("Type", type));
        EXPECT_FALSE(built);
        EXPECT_TRUE(other->GetRootMdl().IsNull());
        EXPECT_TRUE(tool->UpdataToolParameterData(With("Type", type))) << "an update ignores other types";
    }
    const std::pair<const char*, double> noTorch[] = {
        {"tcp_z", 60},        // the nozzle would stand inside the body
        {"neck_radius", 200}, // thicker than the body, and than any bend
        {"tip_radius", 12.5}, // wider than the gas nozzle
        {"tcp_x", -900},      // a bend backwards
    };
    for (const auto& [key, value] : noTorch) {
        EXPECT_FALSE(ToolEntity::CreateToolEntityByParameter(With(key, value)).first) << key;
        EXPECT_FALSE(tool->UpdataToolParameterData(With(key, value))) << key;
    }
    EXPECT_TRUE(ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).first);
    for (const auto& kind : {Json::arrayValue, Json::objectValue}) {
        EXPECT_THROW(ToolEntity::CreateToolEntityByParameter(With("Type", kind)), std::invalid_argument);
    }
    EXPECT_THROW(ToolEntity::CreateToolEntityByParameter(With("tcp_z", -1.0)), std::invalid_argument);
}

TEST_F(Torch, UpdateKeepsIdentifiersAndPlacement) {
    tool->SetRootMdlTrsf(gpHandle::EulerToTrsf(LocEuler({5, 6, 7}, {0.1, 0, 0})));
    const gp_Trsf placement = tool->GetRootMdl()->LocalTransformation();
    const auto before = tool->GetFixMdls();
    ASSERT_TRUE(tool->UpdataToolParameterData(With("tcp_z", 400.0)));
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

    tool->AddFixMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    EXPECT_FALSE(tool->UpdataToolParameterData(sample::TorchParameters())) << "four parts are not a torch's";
    EXPECT_EQ(tool->GetParameters()["tcp_z"].asDouble(), 400);
}

TEST_F(Torch, DefaultToolHasNoModels) {
    ToolEntity nothing;
    nothing.SetSimulatorState(true);
    nothing.Initial();
    EXPECT_FALSE(nothing.UpdataToolParameterData(sample::TorchParameters()));
    Json::Value out;
    nothing.ExportParaToJson(out);
    EXPECT_EQ(out.size(), 2U);
}

TEST_F(Torch, UnknownWorkTypeIsKeptAndTextIsRefused) {
    tool->SetToolWorkType(static_cast<ToolEntity::ToolWorkType>(17));
    Json::Value json = tool->ToJson("");
    tool->LoadFromJson(json);
    EXPECT_EQ(tool->GetToolWorkType(), 17);
    json["WorkType"] = "painting";
    json["HashID"] = 5;
    EXPECT_THROW(tool->LoadFromJson(json), std::invalid_argument);
    EXPECT_NE(tool->GetHashIndex(), 5U);
    json.removeMember("WorkType");
    tool->LoadFromJson(json);
    EXPECT_EQ(tool->GetToolWorkType(), 0);
}

} // namespace
