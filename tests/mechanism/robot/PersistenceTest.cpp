#include <json/reader.h>
#include <support/Mechanism.h>

namespace {

class RobotPersistence : public testing::Test {
protected:
    RobotEntity robot{sample::Build(sample::SixAxisArm(), 31, "R1").get()};
    const Json::Value saved = robot.ToJson("");
};

TEST_F(RobotPersistence, OmitsEmptyListsAndTheBrand) {
    Json::Value json = saved;
    json["RobotBrand"] = 7;
    robot.LoadFromJson(json);
    Json::Value out;
    robot.ExportParaToJson(out);
    EXPECT_EQ(out["RobotBrand"].asInt(), 7);
    EXPECT_EQ(robot.ToJson("")["CBench"].asUInt64(), 0U);
    robot.SetTools({});
    for (const char* key : {"ToolLib", "Workbenches", "RobotBrand", "J7"}) {
        EXPECT_FALSE(robot.ToJson("").isMember(key)) << key;
    }
}

TEST_F(RobotPersistence, IncompleteTablesAreExtractedOrPadded) {
    const auto table = robot.GetArmDH();
    Json::Value notARow = saved;
    notARow["DH"][0] = 3; // the table comes from the links
    Json::Value noTable = saved;
    noTable.removeMember("DH");
    Json::Value shortRow = saved;
    shortRow["DH"][0].resize(3); // a, alpha, d: theta is padded, and is zero there
    Json::Value noList = saved;
    noList["DH"] = 3;
    Json::Value emptyObject = saved;
    emptyObject["DH"] = Json::Value(Json::objectValue);
    for (const Json::Value& json : {notARow, noTable, shortRow, noList, emptyObject}) {
        robot.LoadFromJson(json);
        ASSERT_EQ(robot.GetArmDH().size(), table.size());
        for (std::size_t row = 0; row < table.size(); ++row) {
            EXPECT_THAT(robot.GetArmDH()[row], testing::Pointwise(testing::DoubleNear(1e-9), table[row]));
        }
    }
}

TEST_F(RobotPersistence, LoadingAnotherTableMovesAxesAndNoBodies) {
    Json::Value longer = saved;
    longer["DH"][2][0] = saved["DH"][2][0].asDouble() + 10;
    const auto place = [&] {
        const auto& body = robot.GetAxis(4)->models[0];
        return body->Transformation() * body->Shape().Location().Transformation();
    };
    const gp_Trsf before = place();
    robot.LoadFromJson(longer);
    EXPECT_THAT(place(), IsTrsf(before));
    EXPECT_NEAR(robot.GetArmDH()[2][0], longer["DH"][2][0].asDouble(), 1e-9);
}

TEST_F(RobotPersistence, MoreRowsThanLinksLogsAndThrows) {
    Json::Value json = saved;
    json["DH"].append(json["DH"][5]);
    ExpectFailure([&] { robot.LoadFromJson(json); }, "RobotEntity", "RobotEntity::LoadFromJson",
                  "存在异常的空数据");
}

TEST_F(RobotPersistence, FaultyDocumentIsRefusedByKeyAndChangesNothing) {
    const std::tuple<const char*, const char*, const char*> faults[] = {
        {".ID", "\"no identifier\"", "ID: \"no identifier\""},
        {".ToolLib[0]", "[1, 0, 0]", "ToolLib[0]"},
        {".CurrentToolIndex", "-1", "CurrentToolIndex"},
        {".DH[2]", "[0, 0, 0, 0, 0]", "DH"},
        {".DH[2][1]", "\"x\"", "DH"},
        {".J3.axis_min", "500", "J3.axis_min"},
        {".J4", "4", "J4"},
        {".RobotBrand", "\"x\"", "RobotBrand"},
        {".DH", "[[1e9, 0, 0, 0], [1e9, 0, 0, 0]]", "DH"},
    };
    for (const auto& [path, value, complaint] : faults) {
        Json::Value json = saved;
        json["HashID"] = 12;
        Json::Path(path).make(json) = Parsed(value);
        EXPECT_THAT(Thrown([&] { robot.LoadFromJson(json); }), testing::HasSubstr(complaint));
        EXPECT_EQ(robot.ToJson(""), saved) << path;
    }
    EXPECT_THROW(robot.LoadFromJson("text"), std::invalid_argument);
    Json::Value json = saved;
    json["DH"] = Parsed("[1]");
    json["J2"]["axis_min"] = "low";
    EXPECT_THAT(Thrown([&] { robot.LoadFromJson(json); }), testing::HasSubstr("J2.axis_min"));
    EXPECT_EQ(robot.ToJson(""), saved) << "links are looked at before the table is taken from them";
}

TEST_F(RobotPersistence, UnreadableCurrentToolOfAnEmptyListChangesNothing) {
    Json::Value json = saved;
    json["HashID"] = 12;
    json["ToolLib"] = Json::Value(Json::arrayValue);
    json["CurrentToolIndex"] = 11;
    EXPECT_EQ(Thrown([&] { robot.LoadFromJson(json); }), "invalid vector subscript");
    EXPECT_EQ(robot.ToJson(""), saved);
}

TEST_F(RobotPersistence, RenamingAndInitialKeepTheCurrentValues) {
    const std::vector<double> values = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    for (const bool moved : {false, true}) {
        robot.SetCurrentValue(values, 31);
        if (moved) {
            robot.ForwardTrsfWithValue({1, 0, 0, 0, 0, 0}, true, true);
        }
        robot.UpdateLinkModelNames();
        EXPECT_EQ(robot.GetCurrentValue(0), values);
        robot.Initial();
        EXPECT_EQ(robot.GetCurrentValue(0), values);
        EXPECT_EQ(robot.GetLink(0)->value, moved ? 1 : 0) << "nor do the links move";
    }
}

TEST_F(RobotPersistence, NullModelIsSkippedWithAWarning) {
    robot.GetLink(2)->models.push_back(nullptr);
    robot.UpdateLinkModelNames();
    LogCapture log;
    EXPECT_EQ(robot.ToJson("")["J3"]["axis_models"].size(), 1U);
    ASSERT_EQ(log.Records().size(), 1U);
    EXPECT_EQ(log.Records()[0].level, spdlog::level::warn);
    EXPECT_EQ(log.Records()[0].text, "不应该有空的节点出现");
}

} // namespace
