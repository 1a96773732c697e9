#include "Arms.h"

#include <planning/CarriedArm.h>
#include <support/SampleMechanisms.h>
#include <support/Thrown.h>

using namespace planning;

namespace {

/// An arm on a rail that slides, turns and slides, and a positioner beside it.
class OnARail : public testing::TestWithParam<sample::Case> {
protected:
    OnARail() {
        rail->SetRootMdlTrsf(sample::Frame({100, -50, 20}, gp_Dir(0.1, 0, 1), gp_Dir(1, 0.2, 0)));
        robot.SetAssembleTrsf(sample::Frame({5, 10, 15}, gp_Dir(0, 0.1, 1), gp_Dir(1, 0, 0)));
        rail->AssembleOtherModel(&robot, sample::Place(102, 0));
        table->SetRootMdlTrsf(sample::Frame({1500, 300, 0}, gp_Dir(0, 0, 1), gp_Dir(0.5, 1, 0)));
        robot.SetTools({sample::Frame({30, 5, 200}, gp_Dir(0, 0.5, 1), gp_Dir(1, 0, 0))});
        carried = std::make_unique<CarriedArm>(robot, table.get(), 0);
    }
    AxisValues Values() const { return {armValues, railValues, tableValues}; }

    const std::unique_ptr<GenericEntityConfig> rail = sample::Build(sample::TurningRail(), 50, "rail");
    const std::unique_ptr<GenericEntityConfig> table = sample::Build(sample::Positioner(), 60, "table");
    const sample::Mechanism arm = GetParam().make();
    const std::unique_ptr<GenericEntityConfig> structure = sample::Build(arm, 70);
    RobotEntity robot{structure.get()};
    std::mt19937 random{5};
    std::vector<double> armValues = sample::RandomValues(arm, random);
    std::vector<double> railValues = {400, 0.3, 250};
    std::vector<double> tableValues = {0.4, -0.8};
    std::unique_ptr<CarriedArm> carried;
};

TEST_P(OnARail, ToolCentreMatchesTheEntitiesInTheWorldAndOnTheWork) {
    rail->SetCurrentValue(railValues, 0);
    robot.SetCurrentValue(armValues, 70);
    robot.ForwardTrsf(70, false, false);
    rail->ForwardTrsf(0, false, true);
    table->SetCurrentValue(tableValues, 0);
    table->ForwardTrsf(0, false, false);
    const gp_Trsf tool = robot.GetCurrentTrsfTCP();
    EXPECT_LE(arms::Between(carried->ToolCentreInWorld(Values()), Rigid::From(tool)).length, 1e-9);
    const gp_Trsf onWork = table->GetFlangeWorldTrsf(*table->GetFlangeByIndex(0)).Inverted() * tool;
    const arms::Miss miss = arms::Between(carried->ToolCentreOnWork(Values()), Rigid::From(onWork));
    EXPECT_LE(miss.length, 1e-9);
    EXPECT_LE(miss.matrix, 1e-12);
}

TEST_P(OnARail, SolutionsReachTheToolCentreInTheWorldAndOnTheWork) {
    for (const bool inWorld : {true, false}) {
        const Rigid pose =
            inWorld ? carried->ToolCentreInWorld(Values()) : carried->ToolCentreOnWork(Values());
        const Solutions solutions = inWorld ? carried->SolveInWorld(pose, railValues, armValues)
                                            : carried->SolveOnWork(pose, Values());
        ASSERT_FALSE(solutions.empty());
        for (const Solution& solution : solutions) {
            AxisValues solved = Values();
            solved.arm = std::span(solution.values).first(armValues.size());
            const Rigid met =
                inWorld ? carried->ToolCentreInWorld(solved) : carried->ToolCentreOnWork(solved);
            EXPECT_LE(arms::Between(met, pose).length, 1e-7);
        }
    }
}

TEST_P(OnARail, JacobianMatchesFiniteDifferences) {
    constexpr double Step = 1e-5;
    const Jacobian jacobian = carried->JacobianAt(Values());
    const std::size_t independent = 6;
    ASSERT_EQ(jacobian.count, independent + 3 + 2);
    const Rigid holder = carried->Holder().FlangeAt(tableValues);
    std::size_t column = 0;
    const auto compare = [&](std::vector<double>& values, std::size_t i) {
        const auto at = [&](double by) {
            values[i] += by;
            if (arm.coupled && &values == &armValues && i == 4) {
                values[5] = -values[4];
            }
            const Rigid tool = holder * carried->ToolCentreOnWork(Values());
            return tool;
        };
        const Rigid after = at(Step);
        const Rigid before = at(-2 * Step);
        at(Step);
        const Rigid tool = holder * carried->ToolCentreOnWork(Values());
        const auto& expected = jacobian.columns[column++];
        for (std::size_t k = 0; k < 3; ++k) {
            EXPECT_NEAR((after.p[k] - before.p[k]) / (2 * Step), expected[k], 1e-4) << "column " << column;
        }
        // Angular velocity: dR * R^T is the cross product with it.
        for (const auto& [row, other, k] : {std::array<int, 3>{2, 1, 0}, {0, 2, 1}, {1, 0, 2}}) {
            double entry = 0;
            for (int j = 0; j < 3; ++j) {
                entry += (after.r[3 * row + j] - before.r[3 * row + j]) / (2 * Step) * tool.r[3 * other + j];
            }
            EXPECT_NEAR(entry, expected[static_cast<std::size_t>(3 + k)], 1e-8) << "column " << column;
        }
    };
    for (std::size_t i = 0; i < armValues.size(); ++i) {
        if (!(arm.coupled && i == 5)) {
            compare(armValues, i);
        }
    }
    for (std::size_t i = 0; i < railValues.size(); ++i) {
        compare(railValues, i);
    }
    for (std::size_t i = 0; i < tableValues.size(); ++i) {
        compare(tableValues, i);
    }
}

INSTANTIATE_TEST_SUITE_P(Arms, OnARail,
                         testing::Values(sample::Case{"SixAxis", sample::SixAxisArm},
                                         sample::Case{"Parallel", sample::ParallelArm},
                                         sample::Case{"CoupledWrist", sample::CoupledArm}),
                         sample::NameOf);

TEST(Manipulability, IsTheProductOfSingularValuesAndVanishesWhereTheWristIsStraight) {
    const auto structure = sample::Build(sample::SixAxisArm(), 3);
    const InverseKinematics solver{RobotEntity(structure.get())};
    const std::vector<double> bent = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6};
    const std::vector<double> straight = {0.1, 0.2, 0.3, 0.4, 0, 0.6};
    EXPECT_GT(solver.JacobianAt(bent).Manipulability(solver.Reach()), 1e-3);
    EXPECT_LT(solver.JacobianAt(straight).Manipulability(solver.Reach()), 1e-12);
    EXPECT_LT(solver.JacobianAt(straight).SingularValues(solver.Reach()).back(), 1e-12);
}

// --- tables ------------------------------------------------------------------------------------------------

constexpr double HalfPi = std::numbers::pi / 2;

ArmTable OrdinaryTable() {
    ArmTable table;
    table.rows = {{0, 0, 500, 0},         {150, -HalfPi, 40, -HalfPi}, {600, 0, 0, 0},
                  {130, -HalfPi, 710, 0}, {0, HalfPi, 0, 0},           {0, -HalfPi, 100, 3}};
    table.limits.assign(6, {-3, 3});
    return table;
}

struct Flaw {
    const char* name;
    void (*spoil)(ArmTable& table);
    const char* report;
};

TEST(ArmTable, OfAnUnsupportedArmIsRefusedNamingTheMisfit) {
    const std::vector<Flaw> flaws = {
        {"offset wrist", [](ArmTable& t) { t.rows[4][0] = 25; }, "distance between axes 4 and 5 is"},
        {"oblique wrist", [](ArmTable& t) { t.rows[5][1] = -1; }, "axes 5 and 6 are"},
        {"joint 3 across", [](ArmTable& t) { t.rows[2][1] = 0.3; }, "axes 2 and 3 are"},
        {"joint 2 leaning", [](ArmTable& t) { t.rows[1][1] = -1.3; }, "axes 1 and 2 are"},
        {"no upper arm", [](ArmTable& t) { t.rows[2][0] = 0; }, "has no length"},
        {"five rows", [](ArmTable& t) { t.rows.pop_back(); }, "5 rows and 6 limits, expected 6 of each"},
        {"coupled with six rows", [](ArmTable& t) { t.coupled = true; }, "expected 7 of each"},
        {"not finite", [](ArmTable& t) { t.rows[3][2] = NAN; }, "row 3 is not finite"},
        {"limits the wrong way round",
         [](ArmTable& t) {
             t.limits[1] = {2, 1};
         },
         "limits of joint 2 are 2 to 1"},
    };
    for (const Flaw& flaw : flaws) {
        ArmTable table = OrdinaryTable();
        flaw.spoil(table);
        EXPECT_THAT(Thrown([&] { InverseKinematics solver(table); }), testing::HasSubstr(flaw.report))
            << flaw.name;
    }
}

TEST(ArmTable, SlightlyOffItsKindGivesSolutionsExactOnItself) {
    ArmTable table = OrdinaryTable();
    table.rows[2][1] = 1e-4;
    table.rows[4][0] = 0.02;
    table.rows[4][1] += 2e-4;
    table.rows[5][1] -= 1e-4;
    const InverseKinematics solver(table);
    std::mt19937 random(6);
    int lost = 0;
    for (int draw = 0; draw < 500; ++draw) {
        const std::vector<double> values = arms::RandomValues(solver, random);
        const Rigid pose = solver.FlangeAt(values);
        const Solutions solutions = solver.Flange(pose, values);
        bool known = false;
        for (const Solution& solution : solutions) {
            EXPECT_LE(arms::Between(solver.FlangeAt(solution.values), pose).length, 1e-7);
            known = known || std::equal(values.begin(), values.end(), solution.values.begin(),
                                        [](double a, double b) { return std::abs(a - b) < 1e-6; });
        }
        lost += known ? 0 : 1;
    }
    // Next to a singularity the shapes of the table and of its kind differ.
    EXPECT_LE(lost, 5);
}

TEST(Pose, WithoutARigidTransformIsRefused) {
    const InverseKinematics solver(OrdinaryTable());
    const Rigid good = solver.FlangeAt(std::vector<double>(6, 0.3));
    const auto refused = [&](auto spoil) {
        Rigid pose = good;
        spoil(pose);
        return Thrown([&] { solver.Flange(pose); });
    };
    const auto noRigid = testing::HasSubstr("no rigid transform");
    EXPECT_THAT(refused([](Rigid& pose) { pose.p[1] = NAN; }), noRigid);
    EXPECT_THAT(refused([](Rigid& pose) { pose.r[4] = NAN; }), noRigid);
    EXPECT_THAT(refused([](Rigid& pose) {
                    for (double& r : pose.r) {
                        r *= 1.01;
                    }
                }),
                noRigid);
    EXPECT_THAT(refused([](Rigid& pose) {
                    pose.r[2] *= -1;
                    pose.r[5] *= -1;
                    pose.r[8] *= -1;
                }),
                noRigid);
    EXPECT_EQ(refused([](Rigid&) {}), "");
    const std::vector<double> five(5);
    EXPECT_THAT(Thrown([&] { solver.Flange(good, five); }),
                testing::HasSubstr("5 reference values, expected 6"));
}

} // namespace
