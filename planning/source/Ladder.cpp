#include "NearGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace planning {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr std::uint32_t NoOne = 0xffffffff;

} // namespace

struct Ladder::State {
    struct Link {
        std::vector<std::uint32_t> before; ///< of each candidate, in the rung before
        std::uint32_t changed = NoOne;     ///< candidate from which the rung may be changed within itself
        std::vector<bool> byChange;        ///< which candidates are reached so
    };
    std::vector<Link> links;
    Rung last;
    std::vector<double> totals;
};

Ladder::Ladder() : state(std::make_unique<State>()) {}
Ladder::~Ladder() = default;
Ladder::Ladder(Ladder&& other) noexcept = default;
Ladder& Ladder::operator=(Ladder&& other) noexcept = default;

const Rung& Ladder::Last() const { return state->last; }
const std::vector<double>& Ladder::Totals() const { return state->totals; }

std::size_t Ladder::Append(const Rung& rung, double length, const StepRules& rules) {
    State::Link link;
    std::vector<double> totals = rung.costs;
    std::size_t reached = rung.size();
    link.before.assign(state->links.empty() ? 0 : rung.size(), NoOne);
    if (!state->links.empty()) {
        reached = 0;
        const Rung& last = state->last;
        const std::vector<double>& before = state->totals;
        const NearGrid near(last, rules, length, before);
        for (std::size_t i = 0; i < rung.size(); ++i) {
            double best = Infinity;
            const auto consider = [&](std::uint32_t candidate, double from, const double* row) {
                const double total = from + StepCost(rules, row, rung.Row(i), length, best - from);
                if (total < best) {
                    best = total;
                    link.before[i] = candidate;
                }
            };
            // Rungs are made alike: what follows the last one's best is mostly a good one.
            const std::size_t guess = i > 0 && link.before[i - 1] != NoOne ? link.before[i - 1] + 1 : i;
            if (guess < last.size() && last.groups[guess] == rung.groups[i] && before[guess] < Infinity) {
                consider(static_cast<std::uint32_t>(guess), before[guess], last.Row(guess));
            }
            near.Around(
                rung.Row(i), rung.groups[i], [&] { return best; },
                [&](const NearGrid::Found& from) { consider(from.candidate, from.total, from.row); });
            totals[i] = best + rung.costs[i];
            reached += static_cast<std::size_t>(best < Infinity);
        }
    }
    if (reached > 0) {
        state->links.push_back(std::move(link));
        state->last = rung;
        state->totals = std::move(totals);
    }
    return reached;
}

void Ladder::AllowChange(double cost) {
    auto& totals = state->totals;
    auto& link = state->links.back();
    const auto least = std::min_element(totals.begin(), totals.end());
    const double changed = *least + cost;
    const std::vector<double>& costs = state->last.costs;
    link.changed = static_cast<std::uint32_t>(least - totals.begin());
    link.byChange.assign(totals.size(), false);
    for (std::size_t i = 0; i < totals.size(); ++i) {
        if (changed + costs[i] < totals[i]) {
            totals[i] = changed + costs[i];
            link.byChange[i] = true;
        }
    }
}

double Ladder::Cost() const {
    return state->totals.empty() ? 0 : *std::min_element(state->totals.begin(), state->totals.end());
}

std::vector<Ladder::Stop> Ladder::Way() const {
    std::vector<Stop> way;
    if (state->totals.empty()) {
        return way;
    }
    const auto least = std::min_element(state->totals.begin(), state->totals.end());
    auto candidate = static_cast<std::uint32_t>(least - state->totals.begin());
    for (std::size_t rung = state->links.size(); rung-- > 0;) {
        const State::Link& link = state->links[rung];
        way.push_back({rung, candidate});
        if (!link.byChange.empty() && link.byChange[candidate]) {
            candidate = link.changed;
            way.push_back({rung, candidate});
        }
        candidate = rung > 0 ? link.before[candidate] : 0;
    }
    std::reverse(way.begin(), way.end());
    return way;
}

} // namespace planning
