#include <mechanism/GrpStateUtils.h>

#include "StateAccess.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

bool HasValues(const GrpState& state, int count) {
    return mechanism_detail::StateAccess::HasValues(state, count);
}

bool Matches(const GrpState& state, const GrpState& kept, double tolerance) {
    const int count = mechanism_detail::StateAccess::CountValues(state);
    if (!HasValues(kept, count)) {
        return count == 0;
    }
    const double* const a = state.GetValuesPtr();
    const double* const b = kept.GetValuesPtr();
    for (int i = 0; i < count; ++i) {
        if (!(std::abs(b[i] - a[i]) <= tolerance)) {
            return false;
        }
    }
    return true;
}

/// Thins by reference, so that states that are dropped later were never copied.
template <class State, class Same>
std::vector<State> Thin(const std::vector<State>& states, Same same) {
    if (states.empty()) {
        return {};
    }
    std::vector<const State*> kept;
    kept.reserve(states.size());
    for (const State& state : states) {
        if (!kept.empty() && same(state, *kept.back())) {
            continue;
        }
        if (kept.size() >= 2 && same(state, **(kept.end() - 2))) {
            kept.pop_back();
            continue;
        }
        kept.push_back(&state);
    }
    if (kept.size() > 1) {
        kept.pop_back();
    }
    kept.push_back(&states.back());
    std::vector<State> thinned;
    thinned.reserve(kept.size());
    for (const State* state : kept) {
        thinned.push_back(*state);
    }
    return thinned;
}

/// Squared distance and index of one candidate.
using Candidate = std::pair<double, std::size_t>;

bool IsNearer(const Candidate& a, const Candidate& b) {
    if (std::isnan(a.first) || std::isnan(b.first)) {
        return std::pair(std::isnan(a.first), a.second) < std::pair(std::isnan(b.first), b.second);
    }
    return a < b;
}

double SquaredDistance(const double* a, const double* b, int count) {
    double sum = 0;
    for (int i = 0; i < count; ++i) {
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return sum;
}

std::vector<Candidate> Candidates(const GrpState& reference, const std::vector<GrpState>& states, int count) {
    std::vector<Candidate> candidates;
    candidates.reserve(states.size());
    for (const GrpState& state : states) {
        const std::size_t place = candidates.size();
        if (!HasValues(state, count)) {
            throw std::invalid_argument("state " + std::to_string(place) + " has fewer values than the " +
                                        std::to_string(count) + " to compare");
        }
        candidates.emplace_back(SquaredDistance(reference.GetValuesPtr(), state.GetValuesPtr(), count),
                                place);
    }
    return candidates;
}

/// Exchanges states along the cycles of the permutation, which cannot fail half way.
void Arrange(std::vector<GrpState>& states, std::vector<Candidate>& order) {
    for (std::size_t first = 0; first < order.size(); ++first) {
        std::size_t hole = first;
        for (std::size_t from = order[hole].second; from != first; from = order[hole].second) {
            mechanism_detail::StateAccess::Swap(states[hole], states[from]);
            order[hole].second = hole;
            hole = from;
        }
        order[hole].second = hole;
    }
}

} // namespace

std::vector<GrpState> GrpStateUtils::RemoveDuplicatedStates(const std::vector<GrpState>& states,
                                                            double tolerance) {
    return Thin(states, [tolerance](const GrpState& state, const GrpState& kept) {
        return Matches(state, kept, tolerance);
    });
}

std::vector<ContextState> GrpStateUtils::RemoveDuplicatedStates(const std::vector<ContextState>& states,
                                                                double tolerance) {
    return Thin(states, [tolerance](const ContextState& state, const ContextState& kept) {
        return state.IsEqual(kept, tolerance);
    });
}

void GrpStateUtils::SortRobotStateJ(const GrpState& reference, std::vector<GrpState>& states, int count) {
    if (count < 1 || !HasValues(reference, count)) {
        return;
    }
    auto order = Candidates(reference, states, count);
    std::sort(order.begin(), order.end(), IsNearer);
    Arrange(states, order);
}
