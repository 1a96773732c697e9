#include "Raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace WorkSpace {

namespace {

constexpr int Margin = 2;

constexpr std::array<std::pair<int, int>, 4> Neighbours = {{{1, 0}, {-1, 0}, {0, 1}, {0, -1}}};

} // namespace

Raster::Raster(double cellWidth, double radius, double bottom, double top)
    : cell(cellWidth), low(bottom - Margin * cellWidth),
      columns(static_cast<int>(std::ceil(radius / cellWidth)) + Margin),
      rows(static_cast<int>(std::ceil((top - bottom) / cellWidth)) + 2 * Margin),
      cells(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

std::size_t Raster::Index(const SectionPoint& point) const {
    const int column = std::clamp(static_cast<int>(point.r / cell), 0, columns - Margin);
    const int row = std::clamp(static_cast<int>((point.z - low) / cell), 1, rows - Margin);
    return Index(column, row);
}

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

// Steps to the nearest free cell, counted along rows and columns and never less than the straight distance
// divided by the root of two, in one pass down and one up.
void Raster::MeasureDepth(double depth) {
    const auto enough = static_cast<int>(std::ceil(depth * std::numbers::sqrt2 / cell)) + 1;
    std::vector<int> steps(cells.size());
    const auto at = [&](int column, int row) {
        return row < 0 || row >= rows || column >= columns ? 0
               : column < 0                                ? enough
                                                           : steps[Index(column, row)];
    };
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            steps[Index(column, row)] =
                At(column, row) ? 1 + std::min(at(column - 1, row), at(column, row - 1)) : 0;
        }
    }
    deep.assign(cells.size(), 0);
    for (int row = rows - 1; row >= 0; --row) {
        for (int column = columns - 1; column >= 0; --column) {
            int& step = steps[Index(column, row)];
            step = std::min(step, 1 + std::min(at(column + 1, row), at(column, row + 1)));
            deep[Index(column, row)] = step > enough;
        }
    }
}

void Raster::Fill() {
    std::vector<std::uint8_t> inside(cells.size(), 1);
    std::vector<std::pair<int, int>> open = {{columns - 1, 0}};
    inside[Index(columns - 1, 0)] = 0;
    while (!open.empty()) {
        const auto [column, row] = open.back();
        open.pop_back();
        for (const auto& [right, up] : Neighbours) {
            const int c = column + right;
            const int r = row + up;
            if (c >= 0 && c < columns && r >= 0 && r < rows && !At(c, r) && inside[Index(c, r)] != 0) {
                inside[Index(c, r)] = 0;
                open.emplace_back(c, r);
            }
        }
    }
    cells = std::move(inside);
    JoinCorners();
}

// Cells that touch at a corner alone would make the boundary touch itself there.
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
