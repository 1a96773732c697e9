#include <gmock/gmock.h>
#include <support/SampleMechanisms.h>
#include <support/Text.h>
#include <support/Thrown.h>
#include <support/TrsfMatcher.h>

namespace {

class LinkRecords : public testing::Test {
protected:
    std::unique_ptr<GenericEntityConfig> entity = sample::Build(sample::Positioner(), 9);
};

TEST_F(LinkRecords, InvalidRecordIsRefusedByKeyAndChangesNothing) {
    const Json::Value five = Parsed("[0, 0, 0, 0, 0]");
    Json::Value nan = five;
    nan.append(std::nan(""));
    const std::tuple<const char*, Json::Value, const char*> bad[] = {
        {"link_hash", 0, "link_hash: 0"},
        {"link_hash", "x", "link_hash: \"x\""},
        {"parent_link_hash", 5555, "parent_link_hash: 5555"},
        {"parent_link_hash", 0, "parent_link_hash: 0"},
        {"parent_link_hash", -1, "parent_link_hash: -1"},
        {"joint_type", 6, "joint_type: 6"},
        {"joint_type", 7.5, "joint_type: 7.5"},
        {"joint_value", "1", "joint_value: \"1\""},
        {"name", Json::Value(), "name: null"},
        {"center_trsf", nan, "center_trsf"},
        {"center_trsf", five, "center_trsf"},
        {"axis_min", 400, "axis_min: 400"},
        {"joint_axis", five, "joint_axis"},
        {"axis_models", "id", "axis_models"},
    };
    const Json::Value before = entity->DataToJson("");
    for (const auto& [key, value, complaint] : bad) {
        Json::Value json = entity->LinkToJson(entity->GetLink(1));
        json["axis_max"] = 10;
        json["axis_min"] = -10;
        json["joint_value"] = 0.25;
        json[key] = value;
        EXPECT_THAT(Thrown([&] { entity->UpdateLinkRodPara(json, false); }), testing::HasSubstr(complaint));
        EXPECT_EQ(entity->DataToJson(""), before) << complaint;
    }
}

TEST_F(LinkRecords, BodiesStayOrMoveWithTheFrame) {
    Json::Value json = entity->LinkToJson(entity->GetLink(1));
    Json::Value& center = json["center_trsf"];
    center[2] = 40.0;
    const auto flange = [&] { return entity->GetCurrentTrsfTool0(); };
    const gp_Trsf before = flange();
    entity->UpdateLinkRodPara(json, false);
    EXPECT_THAT(flange(), IsTrsf(before, 1e-12, 1e-12)) << "a frame is a choice of coordinates";
    center[2] = 140.0;
    entity->UpdateLinkRodPara(json, true);
    EXPECT_NEAR(flange().Value(3, 4), before.Value(3, 4) + 100, 1e-9);
}

TEST_F(LinkRecords, StructureRoundTripsThroughData) {
    entity->ForwardTrsfWithValue({0.5, -0.25}, true, true);
    GenericEntityConfig copy;
    copy.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    copy.LoadFromJson(entity->DataToJson(""));
    EXPECT_THAT(copy.GetCurrentTrsfTool0(), IsTrsf(entity->GetCurrentTrsfTool0()));
    EXPECT_EQ(copy.GetRootMdl()->GetId(), entity->GetRootMdl()->GetId());
    EXPECT_EQ(copy.GetName(), entity->GetName());
}

} // namespace
