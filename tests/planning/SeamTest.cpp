#include <gmock/gmock.h>
#include <planning/SeamMotion.h>
#include <support/Seams.h>
#include <support/Thrown.h>

using namespace planning;
using Kind = AxisFreedom::Kind;

namespace {

constexpr double OnSeam = 1e-6;   // mm
constexpr double Rounding = 1e-9; // rad

/// A seam that the cell can follow, and what is free.
struct Scene {
    const char* name;
    bool onRail;
    Seam (*seam)();
    void (*rules)(SeamRules& rules);
};

Seam SaddleOnPositioner() {
    Seam seam{sample::Saddle(161), SeamFreedom::Welding(), 40, 60};
    seam.freedom.holder = {sample::Axis(Kind::Downhand), sample::Axis(Kind::Downhand)};
    return seam;
}
Seam SaddleWithSpin() { return {sample::Saddle(241), {}, 50, 50}; }
Seam SparseLine() {
    // Long steps: states have to be added between the poses.
    Seam seam{sample::Straight({-200, -200, 60}, {150, 200, 60}, 6, 0.7), {}, 0, 0};
    seam.freedom.stickOut = {0, 0, 3, 1};
    seam.freedom.spin = {0, 0, 0};
    return seam;
}
Seam LongLine() {
    Seam seam{sample::Straight({0, -900, 60}, {0, 1200, 60}, 120, 0.6), SeamFreedom::Welding(), 30, 30};
    seam.freedom.carrier = {sample::Axis(Kind::Free), sample::Axis(Kind::Fixed, 100)};
    seam.freedom.carrier[0].high = 3000;
    return seam;
}
Seam TurningTable() {
    Seam seam{sample::Saddle(81), SeamFreedom::Painting(), 0, 0};
    seam.freedom.holder = {sample::Axis(Kind::Fixed), sample::Axis(Kind::Linear, 1.5, -4)};
    return seam;
}

const Scene Scenes[] = {
    {"SaddleOnPositioner", false, SaddleOnPositioner, [](SeamRules&) {}},
    {"SaddleWithSpin", false, SaddleWithSpin, [](SeamRules&) {}},
    {"SparseLine", false, SparseLine, [](SeamRules& rules) { rules.steps.assign(8, 0.6); }},
    {"LongLine", true, LongLine, [](SeamRules& rules) { rules.work.p[1] = 200; }},
    {"TurningTable", false, TurningTable, [](SeamRules&) {}},
};

class Followed : public testing::TestWithParam<Scene> {
protected:
    Followed() { GetParam().rules(rules); }

    /// Tool centre in the frame of the work by products of exponentials, and the seam's up in the world.
    gp_Trsf Tool(const std::vector<double>& values) const {
        const AxisValues v = Split(*cell.arm, values);
        const gp_Trsf base =
            GetParam().onRail ? cell.railPlace * cell.railModel.FlangeAt({v.carrier.begin(), v.carrier.end()})
                              : gp_Trsf();
        const gp_Trsf tool = base * cell.armModel.FlangeAt({v.arm.begin(), v.arm.end()}) * cell.torch;
        return Holder(values).Inverted() * tool;
    }
    gp_Trsf Holder(const std::vector<double>& values) const {
        const AxisValues v = Split(*cell.arm, values);
        return cell.tablePlace * cell.tableModel.FlangeAt({v.holder.begin(), v.holder.end()}) *
               rules.work.ToTrsf();
    }

    const sample::WeldingCell cell{GetParam().onRail};
    SeamRules rules;
    const Seam seam = GetParam().seam();
};

TEST_P(Followed, SeamKeepsItsPosesAnglesLimitsStepsAndPath) {
    const SeamPlanner planner(*cell.arm, rules);
    const SeamResult result = planner.Plan(seam);
    ASSERT_TRUE(result.Found()) << result.why.Text(seam.poses.size(), 6);
    EXPECT_LE(result.distance, rules.distance);
    EXPECT_LE(result.angle, rules.angle);
    int next = 0;
    for (std::size_t k = 0; k < result.states.size(); ++k) {
        const SeamState& state = result.states[k];
        const gp_Trsf tool = Tool(state.values);
        EXPECT_LE(tool.TranslationPart().Subtracted(state.tool.ToTrsf().TranslationPart()).Modulus(), OnSeam);
        const gp_Dir axis = gp_Dir(0, 0, 1).Transformed(tool);
        for (std::size_t i = 0; i < state.values.size(); ++i) {
            const auto limit = i < 6 ? cell.arm->Arm().Limit(i)
                               : i < 6 + cell.arm->Carrier().Axes()
                                   ? cell.arm->Carrier().Limit(i - 6)
                                   : cell.arm->Holder().Limit(i - 6 - cell.arm->Carrier().Axes());
            EXPECT_GE(state.values[i], limit.first - Rounding);
            EXPECT_LE(state.values[i], limit.second + Rounding);
            const double step = !rules.steps.empty()                   ? rules.steps[i]
                                : GetParam().onRail && i >= 6 && i < 8 ? 50
                                                                       : 10 * DegreeInRadians;
            EXPECT_LE(k == 0 ? 0 : std::abs(state.values[i] - result.states[k - 1].values[i]),
                      step + Rounding);
        }
        if (state.pose < 0) {
            continue;
        }
        ASSERT_EQ(state.pose, next++);
        const SeamPose& pose = seam.poses[static_cast<std::size_t>(state.pose)];
        const gp_Pnt point(pose.point[0], pose.point[1], pose.point[2]);
        const gp_Dir wanted(pose.tool[0], pose.tool[1], pose.tool[2]);
        const double tilt = std::hypot(seam.freedom.lead.above, seam.freedom.work.above);
        EXPECT_LE(axis.Angle(wanted), tilt + Rounding) << "pose " << state.pose;
        // Off the seam along the tool alone.
        const gp_Vec off(gp_Pnt(tool.TranslationPart()), point);
        EXPECT_LE(off.Crossed(gp_Vec(axis)).Magnitude(), OnSeam);
        EXPECT_LE(std::abs(off.Dot(gp_Vec(axis))), seam.freedom.stickOut.above + OnSeam);
        if (!seam.freedom.holder.empty() && seam.freedom.holder[0].kind == Kind::Downhand) {
            const gp_Dir up = gp_Dir(pose.up[0], pose.up[1], pose.up[2]).Transformed(Holder(state.values));
            EXPECT_LE(up.Angle(gp::DZ()), seam.freedom.downhand + Rounding);
        }
    }
    EXPECT_EQ(next, static_cast<int>(seam.poses.size()));
}

TEST_P(Followed, ToolLeavesThePathBetweenStatesByNoMoreThanIsReported) {
    const SeamResult result = SeamPlanner(*cell.arm, rules).Plan(seam);
    double farthest = 0;
    for (std::size_t k = 1; k < result.states.size(); ++k) {
        const SeamState& a = result.states[k - 1];
        const SeamState& b = result.states[k];
        const gp_Vec leg(gp_Pnt(Tool(a.values).TranslationPart()), gp_Pnt(Tool(b.values).TranslationPart()));
        for (int sample = 1; sample < 40; ++sample) {
            std::vector<double> values = a.values;
            for (std::size_t i = 0; i < values.size(); ++i) {
                values[i] += (b.values[i] - a.values[i]) * sample / 40;
            }
            const gp_Vec at(gp_Pnt(Tool(a.values).TranslationPart()), gp_Pnt(Tool(values).TranslationPart()));
            farthest = std::max(farthest, at.Crossed(leg).Magnitude() / leg.Magnitude());
        }
    }
    EXPECT_LE(farthest, result.distance * 1.05 + OnSeam);
    EXPECT_GE(farthest, result.distance * 0.95 - OnSeam);
    EXPECT_LE(result.distance, rules.distance);
}

INSTANTIATE_TEST_SUITE_P(Scenes, Followed, testing::ValuesIn(Scenes), sample::NameOf);

TEST(SeamMotion, OfTwoSeamsApproachesWorksAndRetractsInTheCheaperDirections) {
    const sample::WeldingCell cell;
    const SeamPlanner planner(*cell.arm, {});
    SeamTask task;
    task.start = {0, 0.2, 0.3, 0, 0.8, 0, 0, 0};
    task.end = task.start;
    task.eitherWay = true;
    // The table goes a radian along with each: forth with one, so back with the other.
    SeamFreedom turning;
    turning.holder = {sample::Axis(Kind::Fixed), sample::Axis(Kind::Linear, 0, 1)};
    task.seams = {{sample::Straight({60, -150, 60}, {60, 150, 60}, 40, 0.6), turning, 50, 50},
                  {sample::Straight({90, -150, 60}, {90, 150, 60}, 40, 0.6), turning, 50, 50}};
    const SeamMotion motion = PlanMotion(planner, task);
    ASSERT_FALSE(motion.states.empty());
    EXPECT_NE(motion.reversed[0], motion.reversed[1]);
    using Leg = MotionState::Leg;
    std::vector<Leg> legs;
    for (std::size_t k = 0; k < motion.states.size(); ++k) {
        const MotionState& state = motion.states[k];
        if (state.leg != Leg::Air && (legs.empty() || legs.back() != state.leg)) {
            legs.push_back(state.leg);
        }
        for (std::size_t i = 0; k > 0 && i < state.values.size(); ++i) {
            EXPECT_LE(std::abs(state.values[i] - motion.states[k - 1].values[i]),
                      10 * DegreeInRadians + Rounding);
        }
    }
    EXPECT_EQ(legs, (std::vector<Leg>{Leg::Approach, Leg::Work, Leg::Retract, Leg::Approach, Leg::Work,
                                      Leg::Retract}));
    EXPECT_EQ(motion.states.front().values, task.start);
    EXPECT_EQ(motion.states.back().values, task.end);
    EXPECT_LE(motion.distance, planner.Rules().distance);
}

TEST(Seam, RoundAJointLimitIsFollowedWhereTheToolMayLeaveItAlone) {
    const sample::WeldingCell cell;
    Seam seam{sample::Saddle(121), {}, 30, 30};
    seam.freedom.spin = {0, 0.2, 0.2};
    const SeamPlanner planner(*cell.arm, {});
    EXPECT_FALSE(planner.Plan(seam).Found());
    for (const std::size_t pose : {30U, 60U, 90U}) {
        seam.poses[pose].mayChange = true;
    }
    const SeamResult result = planner.Plan(seam);
    ASSERT_TRUE(result.Found()) << result.why.Text(seam.poses.size(), 6);
    int changes = 0;
    for (const SeamState& state : result.states) {
        changes += state.changed ? 1 : 0;
        EXPECT_TRUE(!state.changed || state.pose % 30 == 0);
    }
    EXPECT_GE(changes, 1);
}

struct Lost {
    const char* name;
    void (*spoil)(Seam& seam, SeamRules& rules);
    const char* report;
};

TEST(Seam, WithoutAWayIsAnsweredWithTheStretchThePoseAndTheReasons) {
    const std::vector<Lost> cases = {
        {"runs out of reach",
         [](Seam& seam, SeamRules&) {
             seam.poses = sample::Straight({0, 0, 60}, {2000, 0, 60}, 81, 0.3);
         },
         R"(past pose 3[0-9] of 81; poses 0 to 3[0-9] can be followed; lost there: [0-9]+ out of reach)"},
        {"cannot be turned up",
         [](Seam& seam, SeamRules&) {
             seam.freedom.holder = {sample::Axis(Kind::Downhand), sample::Axis(Kind::Fixed)};
             seam.freedom.downhand = 0.01;
             for (SeamPose& pose : seam.poses) {
                 pose.up = {1, 0, 0};
             }
         },
         R"(past pose 0 of 21; no pose can be reached; lost there: 1 not downhand)"},
        {"steps too short", [](Seam&, SeamRules& rules) { rules.steps.assign(8, 1e-4); },
         R"(past pose 1 of 21; poses 0 to 0 can be followed; .*past the step limit of joint)"},
        {"singular", [](Seam&, SeamRules& rules) { rules.singular = 1; }, R"(lost there: .*[0-9]+ singular)"},
    };
    const sample::WeldingCell cell;
    for (const Lost& lost : cases) {
        Seam seam{sample::Straight({-100, -150, 60}, {-100, 150, 60}, 21, 0.6), {}, 0, 0};
        SeamRules rules;
        lost.spoil(seam, rules);
        const SeamResult result = SeamPlanner(*cell.arm, rules).Plan(seam);
        EXPECT_FALSE(result.Found()) << lost.name;
        EXPECT_THAT(result.why.Text(seam.poses.size(), 6), testing::ContainsRegex(lost.report)) << lost.name;
    }
}

TEST(Seam, PastAJointLimitIsAnsweredWithTheJoint) {
    const sample::WeldingCell cell;
    const_cast<LinkRod*>(cell.robot.GetLink(0))->limit = {-0.5, 0.1};
    const CarriedArm narrow(cell.robot, cell.table.get(), 0);
    const Seam seam{sample::Straight({-100, -250, 60}, {-100, 250, 60}, 21, 0.6), {}, 0, 0};
    const SeamResult result = SeamPlanner(narrow, {}).Plan(seam);
    EXPECT_FALSE(result.Found());
    EXPECT_GT(result.why.pose, 10U);
    EXPECT_EQ(result.why.last, result.why.pose - 1);
    EXPECT_GT(result.why.limits[0], 300U);
}

TEST(Seam, ThatMakesNoSenseIsRefusedWithPlaceValueAndExpectation) {
    const std::vector<Lost> cases = {
        {"one pose", [](Seam& s, SeamRules&) { s.poses.resize(1); }, "seam: 1 poses, expected at least 2"},
        {"no direction",
         [](Seam& s, SeamRules&) {
             s.poses[3].tool = {0, 0, 0};
         },
         "pose 3 tool: [0, 0, 0], expected a direction of length 1"},
        {"along the seam",
         [](Seam& s, SeamRules&) {
             s.poses[2].tool = {0, 1, 0};
         },
         "does not run along"},
        {"not finite", [](Seam& s, SeamRules&) { s.poses[1].point[0] = NAN; }, "pose 1 point: [nan"},
        {"tolerance below zero", [](Seam& s, SeamRules&) { s.freedom.lead.below = -0.1; },
         "lead tolerance: -0.1, expected a number that is not negative"},
        {"no step", [](Seam& s, SeamRules&) { s.freedom.spin.step = 0; }, "spin step: 0, expected"},
        {"empty freedom",
         [](Seam& s, SeamRules&) {
             s.freedom.holder = {sample::Axis(Kind::Free), sample::Axis(Kind::Fixed)};
             s.freedom.holder[0].low = 1;
             s.freedom.holder[0].high = 0.5;
         },
         "holder axis 1: 1 to 0.5, expected a range within"},
        {"past a limit",
         [](Seam& s, SeamRules&) {
             s.freedom.holder = {sample::Axis(Kind::Fixed, 4), sample::Axis(Kind::Fixed)};
         },
         "holder axis 1: 4, expected"},
        {"axes that are not there", [](Seam& s, SeamRules&) { s.freedom.carrier.resize(1); },
         "carrier: freedom of 1 axes, expected 0"},
        {"downhand of nothing", [](Seam& s, SeamRules&) { s.freedom.downhand = 0; }, "downhand angle: 0"},
        {"approach", [](Seam& s, SeamRules&) { s.approach = -1; }, "approach: -1, expected a length"},
        {"step limits", [](Seam&, SeamRules& r) { r.steps.assign(3, 1); }, "3 numbers, expected 8"},
        {"deviation", [](Seam&, SeamRules& r) { r.distance = 0; }, "distance between poses: 0, expected"},
    };
    const sample::WeldingCell cell;
    for (const Lost& lost : cases) {
        Seam seam{sample::Straight({-100, -150, 60}, {-100, 150, 60}, 21, 0.6), {}, 0, 0};
        SeamRules rules;
        lost.spoil(seam, rules);
        EXPECT_THAT(Thrown([&] { SeamPlanner(*cell.arm, rules).Plan(seam); }),
                    testing::HasSubstr(lost.report))
            << lost.name;
    }
}

} // namespace
