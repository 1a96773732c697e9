#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <fuzz/Subject.h>
#include <mechanism/mechanism.h>

// Documents of robots and records of their tools: a refused one leaves the robot as it was.

namespace {

/// Fails on the way where the table has more rows than the chain has links; the links up to there are new.
constexpr const char* TableTooLong = "存在异常的空数据";

void Load(Subject<RobotEntity>& robot, const Json::Value& json) {
    try {
        robot->LoadFromJson(json);
        robot->ToJson("");
        robot.Renew();
    } catch (const std::invalid_argument&) {
        robot.RequireUnchanged();
    } catch (const std::string& text) {
        fuzz::Require(text.ends_with(TableTooLong));
        robot.Renew();
    }
}

/// The list of tools grows to any index, up to the end of memory, where a sanitizer stops the process.
constexpr int MostTools = 100000;

void StoreTool(Subject<RobotEntity>& robot, const Json::Value& json) {
    const Json::Value index = json.isObject() ? json["ToolIndex"] : Json::Value();
    if (index.isNumeric() && index.asDouble() > MostTools) {
        return;
    }
    try {
        robot->SetToolData(json);
        robot->GetCurrentTCP();
        robot->GetToolData();
        robot->SetTools({gp_Trsf()});
    } catch (const std::invalid_argument&) {
        robot.RequireUnchanged();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    static Subject<RobotEntity> plain(sample::SixAxisArm);
    static Subject<RobotEntity> coupled(sample::CoupledArm);
    FuzzedDataProvider bytes(data, size);
    Subject<RobotEntity>& robot = bytes.ConsumeBool() ? plain : coupled;
    if (bytes.ConsumeBool()) {
        Load(robot, fuzz::Document(bytes, robot.Good()));
    } else {
        Json::Value good = robot->GetToolData();
        good["Type"] = bytes.ConsumeIntegralInRange(0, 1);
        StoreTool(robot, fuzz::Document(bytes, good));
    }
    return quiet;
}
