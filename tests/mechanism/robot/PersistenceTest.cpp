#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <host/tools/gpHandle.h>
#include <mechanism/RobotEntity.h>
#include <support/LogCapture.h>
#include <support/SampleMechanisms.h>
#include <support/TrsfMatcher.h>

namespace {

class RobotPersistence : public testing::Test {
protected:
    RobotEntity robot{sample::Build(sample::SixAxisArm(), 31, "R1").get()};
};

TEST_F(RobotPersistence, ADocumentHasTheKeysOfTheRobotAndNoEmptyLists) {
    robot.SetTools({});
    const Json::Value json = robot.ToJson("");
    EXPECT_EQ(json["type"].asInt(), 1);
    EXPECT_EQ(json["HashID"].asUInt64(), 31U);
    EXPECT_EQ(json["ID"].asString(), robot.GetRootMdl()->GetId().ToString());
    EXPECT_FALSE(json.isMember("ToolLib"));
    EXPECT_FALSE(json.isMember("Workbenches"));
    EXPECT_FALSE(json.isMember("RobotBrand"));
    EXPECT_EQ(json["CBench"].asUInt64(), 0U);
    EXPECT_EQ(json["entityTrsf"].size(), 12U);
    EXPECT_EQ(json["DH"].size(), 6U);
    EXPECT_FALSE(json.isMember("J7"));
    EXPECT_NEAR(json["J6"]["axis_max"].asDouble(), 175, 1e-9);
    EXPECT_EQ(json["J1"]["axis_models"][0].asString(), robot.GetLink(0)->models[0]->GetId().ToString());
}

TEST_F(RobotPersistence, ASecondRobotLoadsWhatTheFirstSaved) {
    robot.SetTools({gp_Trsf(), gpHandle::EulerToTrsf(LocEuler({1, 2, 3}, {0.1, 0.2, 0.3}))});
    robot.ChangeCurrentTool(1);
    Json::Value json = robot.ToJson("");
    json["RobotBrand"] = 7;
    RobotEntity other{sample::Build(sample::SixAxisArm(), 99, "R2").get()};
    other.LoadFromJson(json);
    EXPECT_EQ(other.GetHashIndex(), 31U);
    EXPECT_TRUE(other.GetSystems().contains(31));
    EXPECT_EQ(other.GetToolIndex(), 1);
    EXPECT_THAT(other.GetCurrentTrsfTCP(), IsTrsf(robot.GetCurrentTrsfTCP(), 1e-9, 1e-12));
    EXPECT_EQ(other.GetLink(3)->models[0]->GetId(), robot.GetLink(3)->models[0]->GetId());
    Json::Value out;
    other.ExportParaToJson(out);
    EXPECT_EQ(out["RobotBrand"].asInt(), 7);
}

TEST_F(RobotPersistence, OddTablesAreReadAsTheyAlwaysWere) {
    const auto table = robot.GetArmDH();
    Json::Value json = robot.ToJson("");
    const auto expectTable = [&](const char* which) {
        robot.LoadFromJson(json);
        ASSERT_EQ(robot.GetArmDH().size(), table.size()) << which;
        for (std::size_t row = 0; row < table.size(); ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                EXPECT_NEAR(robot.GetArmDH()[row][column], table[row][column], 1e-9) << which << row;
            }
        }
    };
    json["DH"][0] = 3; // not a row: the table comes from the links
    expectTable("a number for a row");
    json.removeMember("DH");
    expectTable("no table");
}

TEST_F(RobotPersistence, MoreRowsThanLinksFailLoudly) {
    Json::Value json = robot.ToJson("");
    json["DH"].append(json["DH"][5]);
    json["J7"] = json["J6"];
    LogCapture log;
    EXPECT_THROW(robot.LoadFromJson(json), std::string);
    ASSERT_FALSE(log.Records().empty());
    EXPECT_EQ(log.Records().back().text, "存在异常的空数据");
    EXPECT_EQ(log.Records().back().function, "RobotEntity::LoadFromJson");
}

TEST_F(RobotPersistence, FaultyDocumentsAreRefusedByKeyAndChangeNothing) {
    const auto altered = [&](auto change) {
        Json::Value json = robot.ToJson("");
        json["HashID"] = 12;
        change(json);
        return json;
    };
    const std::vector<std::pair<std::string, Json::Value>> faulty = {
        {"type", altered([](auto& json) { json["type"] = 3; })},
        {"HashID", altered([](auto& json) { json["HashID"] = "12"; })},
        {"ID", altered([](auto& json) { json["ID"] = 5; })},
        {"ID: \"no identifier\"", altered([](auto& json) { json["ID"] = "no identifier"; })},
        {"ToolLib[0]", altered([](auto& json) { json["ToolLib"][0].resize(11); })},
        {"CurrentToolIndex", altered([](auto& json) { json["CurrentToolIndex"] = -1; })},
        {"DH", altered([](auto& json) { json["DH"][2].append(0.0); })},
        {"DH", altered([](auto& json) { json["DH"][2][1] = "x"; })},
        {"J3.axis_min", altered([](auto& json) { json["J3"]["axis_min"] = 500.0; })},
        {"J4", altered([](auto& json) { json["J4"] = 4; })},
        {"RobotBrand", altered([](auto& json) { json["RobotBrand"] = "x"; })},
        {"document", Json::Value("text")},
    };
    const Json::Value before = robot.ToJson("");
    for (const auto& [key, json] : faulty) {
        try {
            robot.LoadFromJson(json);
            ADD_FAILURE() << key;
        } catch (const std::invalid_argument& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(key));
        }
        EXPECT_EQ(robot.ToJson(""), before) << key;
    }
    Json::Value shortRow = before;
    shortRow["DH"][0].resize(3); // a, alpha, d: theta is padded, and is zero there
    robot.LoadFromJson(shortRow);
    EXPECT_NEAR(robot.GetArmDH()[0][2], before["DH"][0][2].asDouble(), 1e-9);
}

TEST_F(RobotPersistence, ModelsAreNamedAfterTheRobotAndNullModelsAreSkipped) {
    robot.AddFixMdl(sample::Block(gp_Trsf()));
    robot.GetLink(2)->models.push_back(nullptr);
    robot.UpdateLinkModelNames();
    EXPECT_EQ(robot.GetFixMdls()[0]->GetName(), "机器人:R1 - 基座");
    EXPECT_EQ(robot.GetLink(2)->models[0]->GetName(), "机器人:R1 - 轴3");
    LogCapture log;
    const Json::Value json = robot.ToJson("");
    EXPECT_EQ(json["J3"]["axis_models"].size(), 1U);
    ASSERT_EQ(log.Records().size(), 1U);
    EXPECT_EQ(log.Records()[0].level, spdlog::level::warn);
    EXPECT_EQ(log.Records()[0].text, "不应该有空的节点出现");
}

TEST_F(RobotPersistence, WithoutARootModelNothingIsLoaded) {
    const Json::Value json = robot.ToJson("");
    robot.SetRootMdl(nullptr);
    robot.SetHashIndex(8);
    robot.LoadFromJson(json);
    EXPECT_EQ(robot.GetHashIndex(), 8U);
}

} // namespace
