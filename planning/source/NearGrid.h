#pragma once

#include <algorithm>
#include <array>
#include <planning/Ladder.h>

namespace planning {

/// Finds the candidates of a rung that lie within the step limits of given values: up to three axes, those
/// that spread widest in steps, are cut into cells at least as wide as a step.
class NearGrid {
public:
    /// @param usable which candidates are looked for.
    template <typename Usable>
    NearGrid(const Rung& rung_, const StepRules& rules, Usable&& usable) : rung(rung_) {
        ChooseAxes(rules, usable);
        Fill(usable);
    }

    /// Calls with the numbers of the candidates of a group in the cells around, the cell of the values first:
    /// what is nearest is mostly cheapest, and spares a look at the others.
    template <typename Each>
    void Around(const double* values, std::size_t group, Each&& each) const {
        std::array<std::size_t, 3> low{};
        std::array<std::size_t, 3> high{};
        std::array<std::size_t, 3> own{};
        for (std::size_t k = 0; k < 3; ++k) {
            const double place = (values[axis[k]] - start[k]) / width[k];
            if (!(place > -1 && place < static_cast<double>(cells[k]) + 1)) {
                return;
            }
            const auto cell = static_cast<std::ptrdiff_t>(place + 1) - 1; // floor
            low[k] = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, cell - 1));
            high[k] = std::min(cells[k] - 1, static_cast<std::size_t>(cell + 1));
            own[k] = std::clamp(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, cell)), low[k], high[k]);
        }
        if (group >= groups) {
            return;
        }
        const auto look = [&](std::size_t a, std::size_t b) {
            const std::size_t row = ((group * cells[0] + a) * cells[1] + b) * cells[2];
            for (std::uint32_t at = first[row + low[2]]; at < first[row + high[2] + 1]; ++at) {
                each(members[at]);
            }
        };
        look(own[0], own[1]);
        for (std::size_t a = low[0]; a <= high[0]; ++a) {
            for (std::size_t b = low[1]; b <= high[1]; ++b) {
                if (a != own[0] || b != own[1]) {
                    look(a, b);
                }
            }
        }
    }

private:
    template <typename Usable>
    void ChooseAxes(const StepRules& rules, Usable& usable) {
        std::size_t count = 0;
        for (std::size_t i = 0; i < rung.size(); ++i) {
            count += static_cast<std::size_t>(usable(i));
        }
        // As many cells as candidates, about.
        std::size_t room = std::max<std::size_t>(1, 2 * count);
        std::vector<std::pair<double, double>> bounds = Bounds(usable);
        for (std::size_t k = 0; k < 3; ++k) {
            double widest = 0;
            for (std::size_t i = 0; i < bounds.size(); ++i) {
                const double spread = (bounds[i].second - bounds[i].first) / rules.limits[i];
                if (spread > widest) {
                    widest = spread;
                    axis[k] = i;
                }
            }
            Cut(k, widest, bounds, room);
        }
    }
    /// Cuts an axis into at most so many cells, each as wide as a step or wider.
    void Cut(std::size_t k, double steps, std::vector<std::pair<double, double>>& bounds, std::size_t& room) {
        cells[k] =
            std::clamp<std::size_t>(static_cast<std::size_t>(std::min(steps, 1e6) * (1 - 1e-9)), 1, room);
        room = std::max<std::size_t>(1, room / cells[k]);
        if (cells[k] == 1) {
            width[k] = Everything;
            return;
        }
        auto& [least, most] = bounds[axis[k]];
        start[k] = least;
        width[k] = (most - least) / static_cast<double>(cells[k]);
        most = least;
    }
    template <typename Usable>
    std::vector<std::pair<double, double>> Bounds(Usable& usable) const {
        std::vector<std::pair<double, double>> bounds(rung.axes, {Everything, -Everything});
        for (std::size_t j = 0; j < rung.size(); ++j) {
            if (usable(j)) {
                const double* row = rung.Row(j);
                for (std::size_t i = 0; i < rung.axes; ++i) {
                    bounds[i].first = std::min(bounds[i].first, row[i]);
                    bounds[i].second = std::max(bounds[i].second, row[i]);
                }
            }
        }
        return bounds;
    }
    std::size_t CellOf(const double* values, std::size_t group) const {
        std::size_t cell = group;
        for (std::size_t k = 0; k < 3; ++k) {
            const auto place =
                static_cast<std::size_t>(std::max(0.0, (values[axis[k]] - start[k]) / width[k]));
            cell = cell * cells[k] + std::min(place, cells[k] - 1);
        }
        return cell;
    }
    template <typename Usable>
    void Fill(Usable& usable) {
        groups = rung.size() > 0 ? 1 + *std::max_element(rung.groups.begin(), rung.groups.end()) : 0u;
        first.assign(groups * cells[0] * cells[1] * cells[2] + 1, 0);
        std::vector<std::uint32_t> cellOf(rung.size());
        for (std::size_t i = 0; i < rung.size(); ++i) {
            if (usable(i)) {
                cellOf[i] = static_cast<std::uint32_t>(CellOf(rung.Row(i), rung.groups[i]));
                ++first[cellOf[i] + 1];
            }
        }
        for (std::size_t c = 1; c < first.size(); ++c) {
            first[c] += first[c - 1];
        }
        members.resize(first.back());
        std::vector<std::uint32_t> next(first.begin(), first.end() - 1);
        for (std::size_t i = 0; i < rung.size(); ++i) {
            if (usable(i)) {
                members[next[cellOf[i]]++] = static_cast<std::uint32_t>(i);
            }
        }
    }

    /// Wider than all values: one cell takes them all.
    static constexpr double Everything = 1e300;

    const Rung& rung;
    std::array<std::size_t, 3> axis{};
    std::array<double, 3> start{}, width{};
    std::array<std::size_t, 3> cells{};
    std::size_t groups = 0;
    std::vector<std::uint32_t> first;   ///< of each cell, in `members`
    std::vector<std::uint32_t> members; ///< candidates, cell by cell
};

} // namespace planning
