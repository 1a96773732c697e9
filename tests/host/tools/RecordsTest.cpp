#include <gtest/gtest.h>
#include <host/tools/LocEuler.h>
#include <host/tools/Uuid.h>
#include <json/json.h>
#include <spdlog/spdlog.h>
#include <support/LogCapture.h>

namespace {

TEST(LocEuler, EqualityIsByNumberAndOtherJsonIsRefused) {
    EXPECT_TRUE(LocEuler() == LocEuler(gp_Pnt(0, 0, 1e-7), gp_Pnt(-1e-7, 0, 0)));
    EXPECT_FALSE(LocEuler() == LocEuler(gp_Pnt(0, 1.1e-7, 0), gp_Pnt()));

    const LocEuler pose(gp_Pnt(1, 2, 3), gp_Pnt(4, 5, 6));
    EXPECT_TRUE(LocEulerFromJson(LocEulerToJson(pose, 3)) == LocEuler(pose.location, gp_Pnt()));
    EXPECT_TRUE(LocEulerFromJson(Json::Value()) == LocEuler());
    EXPECT_THROW(LocEulerToJson(pose, 4), std::invalid_argument);
    Json::Value flag = LocEulerToJson(pose, 6);
    flag[4] = true;
    for (const Json::Value& json : {flag, Json::Value(1.5), Json::Value(Json::objectValue)}) {
        EXPECT_THROW(LocEulerFromJson(json), Json::Exception);
    }
}

TEST(Uuid, TextIsCanonicalOrRefused) {
    const Uuid fresh = Uuid::CreateUuid();
    EXPECT_EQ(fresh.ToString()[14], '4') << "version";
    EXPECT_TRUE(Uuid::FromString(fresh.ToString()) == fresh);
    EXPECT_FALSE(Uuid::CreateUuid() == fresh);
    const std::string lower = "0a1b2c3d-4e5f-4a7b-8c9d-aabbccddeeff";
    EXPECT_EQ(Uuid::FromString("0A1B2C3D-4E5F-4a7b-8C9D-AABBCCDDEEFF").ToString(), lower);
    EXPECT_EQ((Uuid{Uuid::FromString(lower).value, ""}).ToString(), lower);
    EXPECT_EQ(Uuid::FromString("").ToString(), "");
    for (const std::string& bad : {std::string("robot"), lower + " ", lower.substr(1), lower + '\0' + "x"}) {
        EXPECT_THROW(Uuid::FromString(bad), std::invalid_argument);
    }
}

TEST(LogUtils, RecordsReachTheNamedLogger) {
    const auto defaultLogger = spdlog::default_logger();
    LogCapture capture;
    LogUtils::LogWrite({"room/File", 12, "Class::Method"}, spdlog::level::debug, "100 % {} {");
    EXPECT_EQ(capture.Records().at(0).text, "100 % {} {") << "braces are no placeholders";
    EXPECT_EQ(spdlog::default_logger(), defaultLogger);
    EXPECT_NE(LogUtils::Logger(), defaultLogger);
}

} // namespace
