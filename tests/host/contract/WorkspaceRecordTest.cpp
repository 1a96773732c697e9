#include <cmath>
#include <functional>
#include <gmock/gmock.h>
#include <host/workspace/WorkSpace.h>
#include <limits>
#include <support/Thrown.h>

namespace {

using WorkSpace::Robot;

constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

// An ordinary six-axis arm with a torch on its flange.
Robot Sample() {
    constexpr double quarter = 1.5707963267948966;
    Robot robot;
    robot.toolOffset[0] = 0.06;
    robot.toolOffset[2] = 0.33;
    robot.dh = {{0, 0, 500, 0},          {150, -quarter, 0, -quarter}, {600, 0, 0, 0},
                {130, -quarter, 710, 0}, {0, quarter, 0, 0},           {0, -quarter, 125, 0}};
    for (std::size_t i = 0; i < robot.dh.size(); ++i) {
        robot.jointMin[i] = i == 2 ? -1.2 : -1.8;
        robot.jointMax[i] = i == 1 ? 1.4 : 2.2;
    }
    for (int i = 0; i < 3; ++i) {
        robot.toolRotation[4 * i] = 1;
        robot.base[5 * i] = 1;
    }
    return robot;
}

struct Change {
    const char* name;
    void (*apply)(Robot&);
    bool shapesPlainRobot, shapesBox;
};

TEST(Cache, RecordEqualityComparesTheFieldsInUse) {
    const Change changes[] = {
        {"tool", [](Robot& r) { r.toolOffset[2] += 1e-6; }, true, true},
        {"table", [](Robot& r) { r.dh[2][0] += 1e-6; }, true, true},
        {"row", [](Robot& r) { r.dh.pop_back(); }, true, true},
        {"limit", [](Robot& r) { r.jointMax[0] -= 1e-6; }, true, true},
        {"type", [](Robot& r) { r.systemType = 1; }, true, true},
        {"base", [](Robot& r) { r.base[3] += 1; }, false, true},
        {"upright", [](Robot& r) { r.upright = false; }, false, true},
        {"turned tool", [](Robot& r) { r.toolRotation[0] = 0.5; }, false, false},
        {"rounding", [](Robot& r) { r.base[7] += 1e-13; }, false, false},
        {"no number", [](Robot& r) { r.toolOffset[0] = NoNumber; }, true, true},
    };
    Robot before = Sample();
    for (const auto& [name, apply, shapesPlainRobot, shapesBox] : changes) {
        for (const auto& [type, shapes] : {std::pair{0, shapesPlainRobot}, {3, shapesBox}, {4, shapesBox}}) {
            before.systemType = type;
            Robot after = before;
            EXPECT_TRUE(WorkSpace::IsEuqal(before, after));
            apply(after);
            EXPECT_EQ(WorkSpace::IsEuqal(before, after), !shapes) << name << ", type " << type;
        }
    }
}

TEST(BadRecord, InvalidRecordIsRefusedByField) {
    const std::vector<std::pair<void (*)(Robot&), const char*>> faults = {
        {[](Robot& r) { r.dh.resize(5); }, "the table has 5 rows, expected 6 or 7"},
        {[](Robot& r) { r.toolOffset[1] = NoNumber; }, "tool offset is not finite"},
        {[](Robot& r) { r.dh[3][2] = INFINITY; }, "row 3 of the table is not finite"},
        {[](Robot& r) { r.jointMin[2] = 4; }, "joint 3: 4 to"},
        {[](Robot& r) { r.jointMax[5] = NoNumber; }, "joint 6: "},
        {[](Robot& r) { r.dh[2][1] = 0.3; }, "joints 2 and 3 are not parallel"},
    };
    for (const auto& [spoil, text] : faults) {
        Robot robot = Sample();
        spoil(robot);
        for (const auto& call : {std::function<void()>([&] { WorkSpace::GetRobotWorkSpace(robot); }),
                                 std::function<void()>([&] { WorkSpace::GetInvertedRobotWorkSpace(robot); }),
                                 std::function<void()>([&] { WorkSpace::GetRobotMaxWorkSpace(robot); })}) {
            EXPECT_THAT(Thrown(call), testing::HasSubstr(text));
        }
    }
}

TEST(BadRecord, EmptyTableReachesNothing) {
    EXPECT_EQ(WorkSpace::GetRobotMaxWorkSpace(Robot()), (std::array<double, 4>{}));
    EXPECT_NE(Thrown([] { WorkSpace::GetRobotWorkSpace(Robot()); }), "");
}

// An arm's size is a matter of scale, also where its section is a hand wide.
TEST(SmallArm, ProfileScalesWithTheArm) {
    constexpr double Scale = 0.1;
    const Robot large = Sample();
    Robot small = large;
    for (auto& row : small.dh) {
        row[0] *= Scale;
        row[2] *= Scale;
    }
    for (double& metres : small.toolOffset) {
        metres *= Scale;
    }
    const auto areaOf = [](const std::vector<std::vector<double>>& profile) {
        double area = 0;
        for (std::size_t i = 0; i + 1 < profile.size(); ++i) {
            area += (profile[i][0] * profile[i + 1][1] - profile[i + 1][0] * profile[i][1]) / 2;
        }
        return area;
    };
    const auto whole = WorkSpace::GetRobotWorkSpace(large);
    const auto part = WorkSpace::GetRobotWorkSpace(small);
    EXPECT_NEAR(areaOf(part) / (Scale * Scale * areaOf(whole)), 1, 0.01);
    EXPECT_GT(part.size(), whole.size() / 2) << "coarse";
}

} // namespace
