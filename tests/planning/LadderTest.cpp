#include <gtest/gtest.h>
#include <planning/Ladder.h>
#include <random>

using namespace planning;

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

/// Rungs that are small enough to try every way through them.
struct Case {
    explicit Case(unsigned seed) : random(seed) {
        const std::size_t axes = Draw(1, 4);
        for (std::size_t i = 0; i < axes; ++i) {
            rules.limits.push_back(Real(0.2, 0.9));
            rules.weights.push_back(Real(0, 3));
        }
        for (std::size_t k = Draw(1, 6); k > 0; --k) {
            Rung& rung = rungs.emplace_back();
            rung.axes = axes;
            for (std::size_t c = Draw(1, 12); c > 0; --c) {
                for (std::size_t i = 0; i < axes; ++i) {
                    rung.values.push_back(Real(-0.8, 0.8));
                }
                rung.costs.push_back(Real(0, 2));
                rung.groups.push_back(static_cast<std::uint8_t>(Draw(0, 2) == 0 ? 5 : 0));
            }
            lengths.push_back(Real(0.1, 3));
            change.push_back(Draw(0, 2) == 0);
        }
    }
    std::size_t Draw(std::size_t low, std::size_t high) {
        return std::uniform_int_distribution<std::size_t>(low, high)(random);
    }
    double Real(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random); }

    /// Cheapest of all ways from a candidate on, costs added up from the front as a ladder does.
    double Exhaustive(std::size_t k, std::size_t c, double soFar, bool changed) const {
        double best = k + 1 == rungs.size() ? soFar : Infinity;
        for (std::size_t n = 0; k + 1 < rungs.size() && n < rungs[k + 1].size(); ++n) {
            const double step = StepCost(rules, rungs[k].Row(c), rungs[k + 1].Row(n), lengths[k + 1]);
            if (rungs[k].groups[c] == rungs[k + 1].groups[n] && step < Infinity) {
                best = std::min(best, Exhaustive(k + 1, n, soFar + step + rungs[k + 1].costs[n], false));
            }
        }
        for (std::size_t n = 0; change[k] && !changed && n < rungs[k].size(); ++n) {
            best = std::min(best, Exhaustive(k, n, soFar + ChangeCost + rungs[k].costs[n], true));
        }
        return best;
    }
    double Exhaustive() const {
        double best = Infinity;
        for (std::size_t c = 0; c < rungs.front().size(); ++c) {
            best = std::min(best, Exhaustive(0, c, rungs.front().costs[c], false));
        }
        return best;
    }
    double OfWay(const std::vector<Ladder::Stop>& way) const {
        double cost = 0;
        for (std::size_t i = 0; i < way.size(); ++i) {
            const auto& [k, c] = way[i];
            if (i > 0 && way[i - 1].rung == k) {
                cost += ChangeCost;
            } else if (i > 0) {
                cost += StepCost(rules, rungs[k - 1].Row(way[i - 1].candidate), rungs[k].Row(c), lengths[k]);
            }
            cost += rungs[k].costs[c];
        }
        return cost;
    }

    static constexpr double ChangeCost = 0.05;
    std::mt19937 random;
    StepRules rules;
    std::vector<Rung> rungs;
    std::vector<double> lengths;
    std::vector<bool> change;
};

TEST(Ladder, OfTwoHundredSmallCasesCostsWhatTheBestOfAllWaysCosts) {
    int withoutWay = 0;
    int changes = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        const Case drawn(seed);
        Ladder ladder;
        bool reached = true;
        for (std::size_t k = 0; k < drawn.rungs.size() && reached; ++k) {
            reached = ladder.Append(drawn.rungs[k], drawn.lengths[k], drawn.rules) > 0;
            if (reached && drawn.change[k]) {
                ladder.AllowChange(Case::ChangeCost);
            }
        }
        const double best = drawn.Exhaustive();
        ASSERT_EQ(reached, best < Infinity) << "seed " << seed;
        withoutWay += reached ? 0 : 1;
        if (reached) {
            EXPECT_EQ(ladder.Cost(), best) << "seed " << seed;
            EXPECT_NEAR(drawn.OfWay(ladder.Way()), best, 1e-12 * best) << "seed " << seed;
            changes += ladder.Way().size() > drawn.rungs.size() ? 1 : 0;
        }
    }
    // Otherwise the cases would not show much.
    EXPECT_GT(withoutWay, 20);
    EXPECT_LT(withoutWay, 120);
    EXPECT_GT(changes, 10);
}

TEST(Ladder, WithARungOutOfReachStaysAsItWas) {
    const Rung near{1, {0, 0.1}, {1, 2}, {0, 0}};
    const Rung far{1, {5}, {0}, {0}};
    const StepRules rules{{0.5}, {1}};
    Ladder ladder;
    EXPECT_EQ(ladder.Append(near, 1, rules), 2U);
    EXPECT_EQ(ladder.Append(far, 1, rules), 0U);
    EXPECT_EQ(ladder.Cost(), 1);
    EXPECT_EQ(ladder.Way(), (std::vector<Ladder::Stop>{{0, 0}}));
}

} // namespace
