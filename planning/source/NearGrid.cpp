#include "NearGrid.h"

#include <algorithm>

namespace planning {

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
/// Cells in a step, and how many more cells than candidates there may be.
constexpr double CellsOfStep = 2;
constexpr std::size_t CellsOfCandidate = 4;
constexpr double Rounding = 1e-9;

} // namespace

NearGrid::NearGrid(const Rung& rung_, const StepRules& rules, double length,
                   const std::vector<double>& totals_)
    : rung(rung_), totals(totals_) {
    ChooseAxes(rules, length);
    Fill();
}

void NearGrid::ChooseAxes(const StepRules& rules, double length) {
    std::size_t room = 1;
    for (std::size_t i = 0; i < rung.size(); ++i) {
        room += Usable(i) ? CellsOfCandidate : 0;
    }
    std::vector<std::pair<double, double>> bounds = Bounds();
    if (bounds.empty()) {
        return;
    }
    for (std::size_t k = 0; k < 3; ++k) {
        double widest = 0;
        for (std::size_t i = 0; i < bounds.size(); ++i) {
            const double spread = (bounds[i].second - bounds[i].first) / rules.limits[i];
            if (spread > widest) {
                widest = spread;
                axis[k] = i;
            }
        }
        Cut(k, widest > 0 ? rules.limits[axis[k]] : Infinity, bounds[axis[k]], room);
        if (cells[k] > 1) {
            scale[k] = rules.weights[axis[k]] / length / (inverse[k] * inverse[k]);
        }
    }
}

/// One cell where the spread is within a step; it takes every value.
void NearGrid::Cut(std::size_t k, double limit, std::pair<double, double>& bounds, std::size_t& room) {
    const double spread = bounds.second - bounds.first;
    const double wanted = std::min(CellsOfStep * spread / limit, 1e6) * (1 - Rounding);
    cells[k] = wanted > CellsOfStep ? std::clamp<std::size_t>(static_cast<std::size_t>(wanted), 1, room) : 1;
    room = std::max<std::size_t>(1, room / cells[k]);
    if (cells[k] > 1) {
        start[k] = bounds.first;
        inverse[k] = static_cast<double>(cells[k]) / spread;
        reach[k] = static_cast<std::ptrdiff_t>(std::ceil(limit * inverse[k] - Rounding));
        bounds.second = bounds.first;
    }
}

std::vector<std::pair<double, double>> NearGrid::Bounds() const {
    std::vector<std::pair<double, double>> bounds(rung.axes, {Infinity, -Infinity});
    for (std::size_t j = 0; j < rung.size(); ++j) {
        if (Usable(j)) {
            const double* row = rung.Row(j);
            for (std::size_t i = 0; i < rung.axes; ++i) {
                bounds[i].first = std::min(bounds[i].first, row[i]);
                bounds[i].second = std::max(bounds[i].second, row[i]);
            }
        }
    }
    return bounds;
}

std::size_t NearGrid::CellOf(std::size_t candidate) const {
    std::size_t cell = rung.groups[candidate];
    for (std::size_t k = 0; k < 3; ++k) {
        const double place = (rung.Row(candidate)[axis[k]] - start[k]) * inverse[k];
        cell = cell * cells[k] + std::min(static_cast<std::size_t>(std::max(0.0, place)), cells[k] - 1);
    }
    return cell;
}

void NearGrid::Fill() {
    groups = rung.size() > 0 ? 1U + *std::max_element(rung.groups.begin(), rung.groups.end()) : 0U;
    first.assign(groups * cells[0] * cells[1] * cells[2] + 1, 0);
    least.assign(groups * cells[0] * cells[1], Infinity);
    std::vector<std::uint32_t> cellOf(rung.size());
    for (std::size_t i = 0; i < rung.size(); ++i) {
        if (Usable(i)) {
            const std::size_t cell = CellOf(i);
            cellOf[i] = static_cast<std::uint32_t>(cell);
            ++first[cell + 1];
            least[cell / cells[2]] = std::min(least[cell / cells[2]], totals[i]);
        }
    }
    for (std::size_t c = 1; c < first.size(); ++c) {
        first[c] += first[c - 1];
    }
    members.resize(first.back());
    std::vector<std::uint32_t> next(first.begin(), first.end() - 1);
    for (std::size_t i = 0; i < rung.size(); ++i) {
        if (Usable(i)) {
            members[next[cellOf[i]]++] = static_cast<std::uint32_t>(i);
        }
    }
    for (std::size_t c = 0; c + 1 < first.size(); ++c) {
        if (first[c + 1] - first[c] > 1) {
            std::sort(members.begin() + first[c], members.begin() + first[c + 1],
                      [&](std::uint32_t a, std::uint32_t b) { return totals[a] < totals[b]; });
        }
    }
    // Side by side, as they are looked at.
    rows.reserve(members.size() * rung.axes);
    for (const std::uint32_t member : members) {
        sorted.push_back(totals[member]);
        rows.insert(rows.end(), rung.Row(member), rung.Row(member) + rung.axes);
    }
}

} // namespace planning
