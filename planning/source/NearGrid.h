#pragma once

#include <array>
#include <planning/Ladder.h>

namespace planning {

/// Finds the candidates of a rung that lie within the step limits of given values, cheapest first where that
/// spares a look: up to three axes, those that spread widest in steps, are cut into cells of half a step or
/// more, and a cell is left out when what it has cannot be cheaper than what was found.
class NearGrid {
public:
    /// @param totals_ what the way to each candidate costs; infinity leaves one out.
    NearGrid(const Rung& rung_, const StepRules& rules, double length, const std::vector<double>& totals_);

    struct Found {
        std::uint32_t candidate;
        double total;
        const double* row;
    };
    /// Calls with the candidates of a group in the cells around.
    /// @param best cost above which a candidate, the step to it included, is of no interest; asked again
    /// after every call of `each`.
    template <typename Best, typename Each>
    void Around(const double* values, std::size_t group, Best&& best, Each&& each) const;

private:
    /// Cells of an axis that lie within a step, nearest first, with the least cost of the step to them.
    struct Nearby {
        std::size_t count = 0;
        std::array<std::size_t, 5> cell;
        std::array<double, 5> cost;
    };
    bool Usable(std::size_t i) const { return totals[i] < std::numeric_limits<double>::infinity(); }
    void ChooseAxes(const StepRules& rules, double length);
    void Cut(std::size_t k, double limit, std::pair<double, double>& bounds, std::size_t& room);
    std::vector<std::pair<double, double>> Bounds() const;
    std::size_t CellOf(std::size_t candidate) const;
    void Fill();
    Nearby Near(std::size_t k, double value) const;

    const Rung& rung;
    const std::vector<double>& totals;
    std::array<std::size_t, 3> axis{};
    std::array<std::size_t, 3> cells = {1, 1, 1};
    std::array<double, 3> start{}, inverse{}; ///< of the cells: first value, cells a unit
    std::array<double, 3> scale{};            ///< cost of a cell's width, squared
    std::array<std::ptrdiff_t, 3> reach{};    ///< cells in a step
    std::size_t groups = 0;
    std::vector<std::uint32_t> first;   ///< of each cell, in `members`
    std::vector<std::uint32_t> members; ///< candidates, cell by cell, cheapest first
    std::vector<double> sorted;         ///< totals of the members, and their values
    std::vector<double> rows;
    std::vector<double> least; ///< of each row of cells
};

inline NearGrid::Nearby NearGrid::Near(std::size_t k, double value) const {
    Nearby near;
    const double place = (value - start[k]) * inverse[k];
    const auto count = static_cast<std::ptrdiff_t>(cells[k]);
    if (!(place > -3 && place < static_cast<double>(count) + 3)) {
        return near;
    }
    const auto own = static_cast<std::ptrdiff_t>(place + 3) - 3; // floor
    for (std::ptrdiff_t off = 0; off <= 2 * reach[k]; ++off) {
        const std::ptrdiff_t cell = own + (off % 2 == 0 ? off / 2 : -(off + 1) / 2);
        if (cell >= 0 && cell < count) {
            const auto low = static_cast<double>(cell);
            // The last cells take what rounding puts beyond them.
            const double away = cell < own ? place - low - 1 : cell > own ? low - place : 0;
            near.cell[near.count] = static_cast<std::size_t>(cell);
            near.cost[near.count++] = away > 0 ? scale[k] * away * away * (1 - 1e-6) : 0;
        }
    }
    return near;
}

template <typename Best, typename Each>
void NearGrid::Around(const double* values, std::size_t group, Best&& best, Each&& each) const {
    if (group >= groups) {
        return;
    }
    const Nearby a = Near(0, values[axis[0]]);
    const Nearby b = Near(1, values[axis[1]]);
    const Nearby c = Near(2, values[axis[2]]);
    for (std::size_t i = 0; i < a.count; ++i) {
        for (std::size_t j = 0; j < b.count; ++j) {
            const double toRow = a.cost[i] + b.cost[j];
            const std::size_t row = (group * cells[0] + a.cell[i]) * cells[1] + b.cell[j];
            if (least[row] + toRow >= best()) {
                continue;
            }
            for (std::size_t k = 0; k < c.count; ++k) {
                const std::size_t cell = row * cells[2] + c.cell[k];
                const double to = toRow + c.cost[k];
                for (std::uint32_t at = first[cell]; at < first[cell + 1]; ++at) {
                    if (sorted[at] + to >= best()) {
                        break;
                    }
                    each(Found{members[at], sorted[at], rows.data() + at * rung.axes});
                }
            }
        }
    }
}

} // namespace planning
