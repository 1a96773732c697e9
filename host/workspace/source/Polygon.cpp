#include "Polygon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <utility>

namespace WorkSpace {

namespace {

/// Profiles lose steps shorter than this (mm) when they become wires.
constexpr double ShortestStep = 1.0;

struct Step {
    int column, row;
};

// The boundary is followed along cell edges with the marked cells on the left; directions are +r, +z, -r, -z.
constexpr std::array<Step, 4> Ahead = {{{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};
// The two cells ahead in each direction, relative to the current corner.
constexpr std::array<Step, 4> LeftCell = {{{0, 0}, {-1, 0}, {-1, -1}, {0, -1}}};
constexpr std::array<Step, 4> RightCell = {{{0, -1}, {0, 0}, {-1, 0}, {-1, -1}}};

Polygon Walk(const Raster& raster, Step start, std::set<std::pair<int, int>>& seenFloors) {
    Polygon boundary;
    Step at = start;
    std::size_t direction = 0;
    do {
        const auto marked = [&](const Step& cell) {
            return raster.At(at.column + cell.column, at.row + cell.row);
        };
        if (marked(RightCell[direction])) {
            direction = (direction + 3) % 4;
        } else if (!marked(LeftCell[direction])) {
            direction = (direction + 1) % 4;
        }
        const Step& ahead = Ahead[direction];
        if (direction == 0) {
            seenFloors.emplace(at.column, at.row);
        }
        boundary.push_back(raster.Corner(at.column + 0.5 * ahead.column, at.row + 0.5 * ahead.row));
        at = {at.column + ahead.column, at.row + ahead.row};
    } while (at.column != start.column || at.row != start.row);
    return boundary;
}

double DistanceToSegment(const SectionPoint& p, const SectionPoint& a, const SectionPoint& b) {
    const double dr = b.r - a.r;
    const double dz = b.z - a.z;
    const double square = dr * dr + dz * dz;
    const double t = square > 0 ? std::clamp(((p.r - a.r) * dr + (p.z - a.z) * dz) / square, 0.0, 1.0) : 0.0;
    return std::hypot(p.r - a.r - t * dr, p.z - a.z - t * dz);
}

// Douglas-Peucker simplification between two fixed points; indices past the end wrap around.
void Thin(const Polygon& polygon, std::size_t first, std::size_t last, double tolerance,
          std::vector<bool>& keep) {
    const auto point = [&](std::size_t i) -> const SectionPoint& { return polygon[i % polygon.size()]; };
    std::size_t farthest = first;
    double distance = tolerance;
    for (std::size_t i = first + 1; i < last; ++i) {
        const double found = DistanceToSegment(point(i), point(first), point(last));
        if (found > distance) {
            distance = found;
            farthest = i;
        }
    }
    if (farthest != first) {
        keep[farthest % polygon.size()] = true;
        Thin(polygon, first, farthest, tolerance, keep);
        Thin(polygon, farthest, last, tolerance, keep);
    }
}

double Distance(const SectionPoint& a, const SectionPoint& b) { return std::hypot(a.r - b.r, a.z - b.z); }

Polygon Thinned(const Polygon& polygon, double tolerance) {
    const auto opposite = static_cast<std::size_t>(std::max_element(polygon.begin(), polygon.end(),
                                                                    [&](const auto& a, const auto& b) {
                                                                        return Distance(a, polygon.front()) <
                                                                               Distance(b, polygon.front());
                                                                    }) -
                                                   polygon.begin());
    std::vector<bool> keep(polygon.size());
    keep[0] = keep[opposite] = true;
    Thin(polygon, 0, opposite, tolerance, keep);
    Thin(polygon, opposite, polygon.size(), tolerance, keep);
    Polygon thinned;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        if (keep[i] && (thinned.empty() || (Distance(polygon[i], thinned.back()) > ShortestStep &&
                                            Distance(polygon[i], thinned.front()) > ShortestStep))) {
            thinned.push_back(polygon[i]);
        }
    }
    return thinned;
}

bool Meet(const SectionPoint& a, const SectionPoint& b, const SectionPoint& c, const SectionPoint& d) {
    const auto side = [](const SectionPoint& p, const SectionPoint& q, const SectionPoint& s) {
        const double turn = (q.r - p.r) * (s.z - p.z) - (q.z - p.z) * (s.r - p.r);
        return turn > 0 ? 1 : turn < 0 ? -1 : 0;
    };
    return side(a, b, c) * side(a, b, d) <= 0 && side(c, d, a) * side(c, d, b) <= 0 &&
           std::max(a.r, b.r) >= std::min(c.r, d.r) && std::max(c.r, d.r) >= std::min(a.r, b.r) &&
           std::max(a.z, b.z) >= std::min(c.z, d.z) && std::max(c.z, d.z) >= std::min(a.z, b.z);
}

} // namespace

double SignedArea(const Polygon& polygon) {
    double doubled = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const SectionPoint& a = polygon[i];
        const SectionPoint& b = polygon[(i + 1) % polygon.size()];
        doubled += a.r * b.z - b.r * a.z;
    }
    return doubled / 2;
}

bool IsSimple(const Polygon& polygon) {
    const std::size_t n = polygon.size();
    for (std::size_t i = 0; i + 2 < n; ++i) {
        for (std::size_t j = i + 2; j < n && (j + 1) % n != i; ++j) {
            if (Meet(polygon[i], polygon[i + 1], polygon[j], polygon[(j + 1) % n])) {
                return false;
            }
        }
    }
    return n >= 3;
}

Polygon TraceBoundary(const Raster& raster) {
    Polygon largest;
    std::set<std::pair<int, int>> seenFloors;
    for (int row = 1; row < raster.Rows(); ++row) {
        for (int column = 0; column < raster.Columns(); ++column) {
            if (raster.At(column, row) && !raster.At(column, row - 1) &&
                !seenFloors.contains({column, row})) {
                Polygon boundary = Walk(raster, {column, row}, seenFloors);
                if (SignedArea(boundary) > SignedArea(largest)) {
                    largest = std::move(boundary);
                }
            }
        }
    }
    return largest;
}

Polygon Simplified(const Polygon& polygon, double tolerance) {
    constexpr double Finest = 1e-6;
    for (; tolerance > Finest; tolerance /= 2) {
        if (Polygon thinned = Thinned(polygon, tolerance); IsSimple(thinned)) {
            return thinned;
        }
    }
    return polygon;
}

} // namespace WorkSpace
