#include "Raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace WorkSpace {

Raster::Raster(double cellWidth, double radius, double bottom, double top)
    : cell(cellWidth), perCell(1 / cellWidth), depthUnit(cellWidth / std::numbers::sqrt2),
      low(bottom - Margin * cellWidth), columns(static_cast<int>(std::ceil(radius / cellWidth)) + Margin),
      rows(static_cast<int>(std::ceil((top - bottom) / cellWidth)) + 2 * Margin),
      cells(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

void Raster::MarkLine(const SectionPoint& a, const SectionPoint& b) {
    const double dr = b.r - a.r;
    const double dz = b.z - a.z;
    const int steps = static_cast<int>(std::max(std::abs(dr), std::abs(dz)) / cell) + 1;
    for (int i = 0; i <= steps; ++i) {
        const double t = static_cast<double>(i) / steps;
        Mark({a.r + t * dr, a.z + t * dz});
    }
}

void Raster::MarkTriangle(const SectionPoint& a, const SectionPoint& b, const SectionPoint& c) {
    const auto side = [](const SectionPoint& from, const SectionPoint& to, const SectionPoint& p) {
        return (to.r - from.r) * (p.z - from.z) - (to.z - from.z) * (p.r - from.r);
    };
    const double turn = side(a, b, c) < 0 ? -1 : 1;
    const auto [left, right] = std::minmax({a.r, b.r, c.r});
    const auto [bottom, top] = std::minmax({a.z, b.z, c.z});
    for (auto row = static_cast<int>((bottom - low) / cell); row <= static_cast<int>((top - low) / cell);
         ++row) {
        for (auto column = static_cast<int>(left / cell); column <= static_cast<int>(right / cell);
             ++column) {
            const SectionPoint centre = Corner(column + 0.5, row + 0.5);
            if (turn * side(a, b, centre) >= 0 && turn * side(b, c, centre) >= 0 &&
                turn * side(c, a, centre) >= 0) {
                Mark(centre);
            }
        }
    }
}

// Steps along rows and columns to the nearest free cell, in one pass down and one up. The Euclidean distance
// is at least their number divided by the root of two; two steps are subtracted because a point may lie
// anywhere in its cell.
void Raster::MeasureDepth() {
    constexpr int Lost = 2;
    const auto stride = static_cast<std::size_t>(columns);
    std::vector<std::uint16_t> steps(cells.size());
    const auto beyondAxis = static_cast<std::uint16_t>(columns + rows); // there is no way out there
    const std::size_t count = cells.size();
    for (std::size_t i = stride; i < count; ++i) {
        const std::uint16_t left = i % stride == 0 ? beyondAxis : steps[i - 1];
        steps[i] = cells[i] != 0 ? static_cast<std::uint16_t>(1 + std::min(left, steps[i - stride])) : 0;
    }
    for (std::size_t i = count - stride; i-- > 0;) {
        const int next = 1 + std::min(steps[i + 1], steps[i + stride]);
        steps[i] = static_cast<std::uint16_t>(std::min<int>(steps[i], next));
    }
    for (std::uint16_t& step : steps) {
        step = static_cast<std::uint16_t>(std::max(step - Lost, 0));
    }
    depths = std::move(steps);
}

// Grows the cells of one kind (marked or free) by one cell; outside the raster there are cells of neither
// kind.
void Raster::Grow(std::uint8_t what, int by) {
    const auto stride = static_cast<std::size_t>(columns);
    for (int step = 0; step < by; ++step) {
        for (const std::size_t jump : {std::size_t{1}, stride}) {
            const std::vector<std::uint8_t> old = cells;
            for (std::size_t i = jump; i < cells.size(); ++i) {
                // The left neighbour of a row's first cell is the previous row's last cell, which is margin.
                const bool isApart = jump == 1 && i % stride == 0;
                if (!isApart && (old[i] == what || old[i - jump] == what)) {
                    cells[i] = old[i - jump] == what ? what : cells[i];
                    cells[i - jump] = old[i] == what ? what : cells[i - jump];
                }
            }
        }
    }
}

void Raster::Fill(int bridged) {
    Grow(1, bridged);
    std::vector<std::uint8_t> inside(cells.size(), 1);
    std::vector<int> open = {columns - 1};
    inside[static_cast<std::size_t>(open.front())] = 0;
    const int last = static_cast<int>(cells.size()) - 1;
    while (!open.empty()) {
        const int at = open.back();
        open.pop_back();
        const auto visit = [&](int next) {
            const auto i = static_cast<std::size_t>(next);
            if (cells[i] == 0 && inside[i] != 0) {
                inside[i] = 0;
                open.push_back(next);
            }
        };
        const int column = at % columns;
        visit(column > 0 ? at - 1 : at);
        visit(column + 1 < columns ? at + 1 : at);
        visit(std::max(at - columns, column));
        visit(at + columns <= last ? at + columns : at);
    }
    cells = std::move(inside);
    Grow(0, bridged);
    JoinCorners();
}

// Where cells touch only at a corner, the boundary would touch itself.
void Raster::JoinCorners() {
    for (bool joined = true; joined;) {
        joined = false;
        for (int row = 0; row + 1 < rows; ++row) {
            for (int column = 0; column + 1 < columns; ++column) {
                const bool rising = At(column, row) && At(column + 1, row + 1);
                const bool falling = At(column + 1, row) && At(column, row + 1);
                const bool alone = rising ? !At(column + 1, row) && !At(column, row + 1)
                                          : falling && !At(column, row) && !At(column + 1, row + 1);
                if (alone) {
                    cells[Index(column, row)] = 1;
                    cells[Index(column + 1, row)] = 1;
                    joined = true;
                }
            }
        }
    }
}

} // namespace WorkSpace
