#include "Arms.h"

#include <numbers>

using namespace planning;

namespace {

double Determinant(const Jacobian& jacobian) {
    std::array<std::array<double, 6>, 6> m;
    std::copy_n(jacobian.columns.begin(), 6, m.begin());
    double product = 1;
    for (std::size_t k = 0; k < 6; ++k) {
        std::size_t pivot = k;
        for (std::size_t i = k; i < 6; ++i) {
            pivot = std::abs(m[i][k]) > std::abs(m[pivot][k]) ? i : pivot;
        }
        product *= pivot == k ? 1 : -1;
        std::swap(m[k], m[pivot]);
        product *= m[k][k];
        for (std::size_t i = k + 1; i < 6; ++i) {
            const double factor = m[i][k] / m[k][k];
            for (std::size_t j = k; j < 6; ++j) {
                m[i][j] -= factor * m[k][j];
            }
        }
    }
    return product;
}

class ConfigurationOf : public testing::TestWithParam<const char*> {
protected:
    /// The solution that has these values.
    Solution At(const std::vector<double>& values) const {
        const Solutions solutions = solver.Flange(solver.FlangeAt(values), values);
        for (const Solution& solution : solutions) {
            double apart = 0;
            for (std::size_t i = 0; i < solver.Joints(); ++i) {
                apart = std::max(apart, std::abs(solution.values[i] - values[i]));
            }
            if (apart < 1e-5) {
                return solution;
            }
        }
        ADD_FAILURE() << "not among the solutions: " << testing::PrintToString(values);
        return {};
    }

    const cell::Cell cell = arms::Load(GetParam());
    const InverseKinematics solver{*cell.Robots().front()};
};

TEST_P(ConfigurationOf, ChangesOnlyAtSingularitiesOfTheJacobian) {
    std::mt19937 random(23);
    constexpr int Steps = 200;
    for (int draw = 0; draw < Draws::Count() / 100; ++draw) {
        const std::vector<double> from = arms::RandomValues(solver, random);
        const std::vector<double> to = arms::RandomValues(solver, random);
        Configuration before{};
        double sign = 0;
        for (int step = 0; step <= Steps; ++step) {
            std::vector<double> values;
            for (std::size_t i = 0; i < from.size(); ++i) {
                values.push_back(from[i] + (to[i] - from[i]) * step / Steps);
            }
            const Configuration now = At(values).configuration;
            const double determinant = Determinant(solver.JacobianAt(values));
            if (sign != 0) {
                // An elbow above the line to the wrist is below it once the shoulder has changed sides.
                const int changed = (now.elbow != before.elbow) + (now.wrist != before.wrist);
                EXPECT_EQ(changed % 2 == 1, determinant * sign < 0) << "draw " << draw << ", step " << step;
                EXPECT_TRUE(changed > 0 || now == before) << "draw " << draw << ", step " << step;
            }
            before = now;
            sign = determinant;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Arms, ConfigurationOf,
                         testing::Values("abb_irb2400_10", "kuka_kr16_2", "motoman_ma2010", "staubli_tx90",
                                         "ur_ur10e"),
                         [](const auto& arm) { return std::string(arm.param); });

struct Shape {
    const char* name;
    std::vector<double> degrees;
    Configuration words;
};

TEST(Configuration, IsTheSameForTheSameShapeOfEveryOrdinaryArm) {
    const std::vector<Shape> shapes = {
        {"reaching forward, tool bent down",
         {10, 20, -20, 0, 40, 0},
         {Shoulder::Front, Elbow::Up, Wrist::NoFlip}},
        {"the same with the wrist turned over",
         {10, 20, -20, 180, -40, 180},
         {Shoulder::Front, Elbow::Up, Wrist::Flip}},
    };
    for (const char* name : {"abb_irb2400_10", "kuka_kr16_2", "motoman_ma2010", "staubli_tx90"}) {
        const cell::Cell cell = arms::Load(name);
        const InverseKinematics solver(*cell.Robots().front());
        for (const Shape& shape : shapes) {
            std::vector<double> values;
            for (const double degrees : shape.degrees) {
                values.push_back(degrees * std::numbers::pi / 180);
            }
            int found = 0;
            for (const Solution& solution : solver.Flange(solver.FlangeAt(values), values)) {
                if (std::abs(solution.values[1] - values[1]) < 1e-6 &&
                    std::abs(solution.values[4] - values[4]) < 1e-6) {
                    EXPECT_EQ(solution.configuration, shape.words) << name << ": " << shape.name;
                    ++found;
                }
            }
            // One whose fourth joint cannot turn over has no such shape.
            const bool possible = solver.Limit(3).second >= std::numbers::pi || shape.degrees[3] == 0;
            EXPECT_EQ(found, possible ? 1 : 0) << name;
        }
    }
}

TEST(Turns, IncludeEveryVariantWithinTheLimits) {
    const cell::Cell cell = arms::Load("ur_ur10e");
    const InverseKinematics solver(*cell.Robots().front());
    const std::vector<double> values = {0.5, 0.6, 0.7, 0.8, 0.9, 1.0};
    const Solutions solutions = solver.Flange(solver.FlangeAt(values), values);
    for (const Solution& solution : solutions) {
        std::size_t expected = 1;
        for (std::size_t i = 0; i < solver.Joints(); ++i) {
            std::size_t turns = 0;
            for (int k = -4; k <= 4; ++k) {
                const double value = solution.values[i] + 2 * std::numbers::pi * k;
                if (value >= solver.Limit(i).first && value <= solver.Limit(i).second) {
                    ++turns;
                }
            }
            expected *= turns;
        }
        std::vector<std::array<double, MaxJoints>> seen;
        solver.ForEachTurn(solution, [&](const Solution& turned) { seen.push_back(turned.values); });
        std::sort(seen.begin(), seen.end());
        EXPECT_EQ(std::unique(seen.begin(), seen.end()) - seen.begin(), static_cast<long>(expected));
        EXPECT_TRUE(std::find(seen.begin(), seen.end(), solution.values) != seen.end() || expected > 1);
    }
}

TEST(Turns, OfACoupledWristKeepValueSixAtMinusValueFive) {
    const cell::Cell cell = arms::Load("abb_irb5400_paint");
    const InverseKinematics solver(*cell.Robots().front());
    const std::vector<double> values = {0.3, 0.2, 0.1, 0.4, 1.1, -1.1, 0.2};
    const Solutions solutions = solver.Flange(solver.FlangeAt(values), values);
    ASSERT_FALSE(solutions.empty());
    int turns = 0;
    solver.ForEachTurn(solutions[0], [&](const Solution& turned) {
        EXPECT_EQ(turned.values[5], -turned.values[4]);
        EXPECT_LE(std::abs(turned.values[4]), solver.Limit(4).second);
        ++turns;
    });
    EXPECT_GT(turns, 1);
}

} // namespace
