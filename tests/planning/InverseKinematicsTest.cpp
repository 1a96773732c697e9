#include "Arms.h"

#include <array>
#include <numbers>
#include <set>

using namespace planning;

namespace {

constexpr double MetLength = 1e-7; // mm
constexpr double MetMatrix = 1e-10;
constexpr double SameValue = 1e-6 * std::numbers::pi / 180.0; // 1e-6 degrees
constexpr double NotTwice = 1e-8;                             // rad
/// Fraction of poses whose original values may be missing, where solutions are found by a search.
constexpr double SearchLoss = 1e-4;

double Apart(const Solution& a, const double* b, std::size_t joints) {
    double apart = 0;
    for (std::size_t i = 0; i < joints; ++i) {
        apart = std::max(apart, std::abs(std::remainder(a.values[i] - b[i], 2 * std::numbers::pi)));
    }
    return apart;
}

class InverseKinematicsOf : public testing::TestWithParam<const char*> {
protected:
    /// Why the solution is wrong; empty when it is valid.
    std::string FaultOf(const Solution& solution, const Rigid& pose) const {
        const arms::Miss miss = arms::Between(solver.FlangeAt(solution.values), pose);
        std::string fault;
        if (!(miss.length <= MetLength && miss.matrix <= MetMatrix)) {
            fault = "misses by " + std::to_string(miss.length * 1e9) + "e-9 mm, " +
                    std::to_string(miss.matrix * 1e12) + "e-12";
        }
        for (std::size_t i = 0; i < solver.Joints(); ++i) {
            const auto& [low, high] = solver.Limit(i);
            if (!(solution.values[i] >= low && solution.values[i] <= high)) {
                fault += " joint " + std::to_string(i + 1) + " outside its limits";
            }
        }
        if (solver.Coupled() && solution.values[5] != -solution.values[4]) {
            fault += " not coupled";
        }
        return fault;
    }

    bool Knows(const Solutions& solutions, const std::vector<double>& values) const {
        return std::any_of(solutions.begin(), solutions.end(), [&](const Solution& solution) {
            return Apart(solution, values.data(), solver.Joints()) <= SameValue;
        });
    }

    const cell::Cell cell = arms::Load(GetParam());
    RobotEntity& robot = *cell.Robots().front();
    const InverseKinematics solver{robot};
};

TEST_P(InverseKinematicsOf, RandomPosesGivesTheOriginalValuesAndOnlyValidOnes) {
    std::mt19937 random(17);
    const int draws = Draws::Count();
    int lost = 0;
    std::size_t found = 0;
    for (int draw = 0; draw < draws; ++draw) {
        const std::vector<double> values = arms::RandomValues(solver, random);
        const Rigid pose = solver.FlangeAt(values);
        const Solutions solutions = solver.Flange(pose);
        found += solutions.size();
        bool singular = solutions.empty();
        for (const Solution& solution : solutions) {
            EXPECT_EQ(FaultOf(solution, pose), "") << "draw " << draw;
            singular = singular || solution.singular != NotSingular;
            for (const Solution* other = &solution + 1; other != solutions.end(); ++other) {
                EXPECT_GT(Apart(solution, other->values.data(), solver.Joints()), NotTwice)
                    << "draw " << draw;
            }
        }
        if (!Knows(solutions, values) && (!singular || solutions.empty())) {
            ++lost;
            std::cout << GetParam() << " draw " << draw << " lost " << testing::PrintToString(values) << "\n";
        }
    }
    RecordProperty("lost", lost);
    std::cout << GetParam() << ": " << draws << " poses, " << found << " solutions, " << lost << " lost\n";
    EXPECT_LE(lost, solver.Coupled() ? SearchLoss * draws : 0);
}

TEST_P(InverseKinematicsOf, AnEntityMatchesItsForwardKinematics) {
    std::mt19937 random(4);
    for (int draw = 0; draw < 20; ++draw) {
        const std::vector<double> values = arms::RandomValues(solver, random);
        robot.ForwardTrsfWithValue(values, false, false);
        const arms::Miss miss =
            arms::Between(solver.ToolCentreAt(values), Rigid::From(robot.GetCurrentTrsfTCP()));
        EXPECT_LE(miss.length, 1e-9);
        EXPECT_LE(miss.matrix, 1e-12);
    }
}

INSTANTIATE_TEST_SUITE_P(Arms, InverseKinematicsOf, testing::ValuesIn(arms::All),
                         [](const auto& arm) { return std::string(arm.param); });

} // namespace
