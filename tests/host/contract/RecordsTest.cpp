#include <gtest/gtest.h>
#include <host/tools/CADParamConfig.h>
#include <host/tools/GeoCurve.h>
#include <host/tools/LocEuler.h>
#include <host/tools/NozzleParam.h>
#include <host/tools/Uuid.h>
#include <host/view/AIS_Mesh.h>
#include <host/workpiece/Workpiece.h>
#include <host/workspace/WorkSpace.h>
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

TEST(LogUtils, RecordsReachTheNamedLogger) {
    const auto defaultLogger = spdlog::default_logger();
    LogCapture capture;
    LogUtils::LogWrite({"room/File", 12, "Class::Method"}, spdlog::level::debug, "100 % {} {");
    EXPECT_EQ(capture.Records().at(0).text, "100 % {} {") << "braces are no placeholders";
    EXPECT_EQ(spdlog::default_logger(), defaultLogger);
    EXPECT_NE(LogUtils::Logger(), defaultLogger);
}

template <class Record, class Member>
std::ptrdiff_t OffsetOf(const Record& record, const Member& member) {
    return reinterpret_cast<const char*>(&member) - reinterpret_cast<const char*>(&record);
}

// Records that the library and its host exchange in memory, copied as blocks on either side.
TEST(RecordLayout, MembersLieWhereBothSidesReadThem) {
    const LinkRod link;
    EXPECT_EQ(OffsetOf(link, link.value), 0);
    const Uuid id;
    EXPECT_EQ(OffsetOf(id, id.text), 16);
    EXPECT_EQ(sizeof(Uuid), 16 + sizeof(std::string));
    const LocEuler pose;
    EXPECT_EQ(OffsetOf(pose, pose.euler), 24);
    EXPECT_EQ(sizeof(LocEuler), 48U);
    const NozzleParam nozzle;
    EXPECT_EQ(OffsetOf(nozzle, nozzle.tcpZ), 6 * 8);
    EXPECT_EQ(OffsetOf(nozzle, nozzle.guardClearance), 11 * 8);
    EXPECT_EQ(sizeof(NozzleParam), 12 * sizeof(double));
    const ColorLayer layer;
    EXPECT_EQ(OffsetOf(layer, layer.transparency), 24);
    EXPECT_EQ(OffsetOf(layer, layer.code), 32);
    const ViewShape shape{TopoDS_Shape()};
    EXPECT_EQ(OffsetOf(shape.collisionTolerance, shape.simulationTolerance), 8);
    const GeoCurve curve;
    EXPECT_EQ(OffsetOf(curve, curve.first), 0);
    EXPECT_EQ(OffsetOf(curve, curve.second), 8);
    EXPECT_EQ(OffsetOf(curve.values, curve.text), 16);
    EXPECT_EQ(sizeof(mesh::AIS_Mesh::MeshLayer), 32U);
    EXPECT_TRUE(std::is_trivially_copyable_v<mesh::AISMESH>);
    EXPECT_EQ(sizeof(CADParamConfig::defaultRobotValues), 6 * sizeof(double));
}

TEST(RecordLayout, ReachabilityRecordKeepsItsOffsets) {
    using WorkSpace::Robot;
    const Robot robot;
    EXPECT_EQ(sizeof(Robot), 432U);
    const std::pair<std::ptrdiff_t, int> offsets[] = {
        {OffsetOf(robot, robot.toolOffset), 0x000}, {OffsetOf(robot, robot.toolRotation), 0x018},
        {OffsetOf(robot, robot.dh), 0x060},         {OffsetOf(robot, robot.jointMin), 0x078},
        {OffsetOf(robot, robot.jointMax), 0x0C0},   {OffsetOf(robot, robot.externalLimits), 0x108},
        {OffsetOf(robot, robot.base), 0x138},       {OffsetOf(robot, robot.ratio), 0x198},
        {OffsetOf(robot, robot.upright), 0x1A0},    {OffsetOf(robot, robot.armStructureCode), 0x1A4},
        {OffsetOf(robot, robot.systemType), 0x1A8}};
    for (const auto& [found, expected] : offsets) {
        EXPECT_EQ(found, expected);
    }
}

TEST(Enumerations, NumbersAreThoseOfDocuments) {
    EXPECT_EQ((std::vector<int>{JointX, JointY, JointZ, JointRotary, JointLinear}),
              (std::vector{3, 4, 5, 7, 8}));
    EXPECT_EQ((std::vector<int>{MechanismRobot, MechanismPedestal, MechanismBench, MechanismTool}),
              (std::vector{1, 2, 3, 4}));
    EXPECT_EQ(sizeof(JointType) + sizeof(MechanismType) + sizeof(EdgeType), 12U);
}

} // namespace
