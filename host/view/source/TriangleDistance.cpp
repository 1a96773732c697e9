#include "TriangleDistance.h"

#include <algorithm>
#include <array>

namespace {

using Point = TriangleModel::Point;
using Triangle = TriangleModel::Triangle;
using Corners = std::array<Point, 3>;

Corners CornersOf(const Triangle& triangle) { return {triangle.a, triangle.b, triangle.c}; }

double Clamped(double value) { return std::clamp(value, 0.0, 1.0); }

// Nearest points of two segments: the free minimum on one is clamped and the other follows, twice, which
// reaches the minimum of this convex function of two parameters (Ericson, Real-Time Collision
// Detection, 5.1.9).
double SegmentSquareDistance(const Point& p, const Point& q, const Point& r, const Point& s) {
    const Point d1 = q - p;
    const Point d2 = s - r;
    const Point between = p - r;
    const double a = d1.Dot(d1);
    const double e = d2.Dot(d2);
    const double b = d1.Dot(d2);
    const double c = d1.Dot(between);
    const double f = d2.Dot(between);
    const double denominator = a * e - b * b;
    double u = denominator > 0 ? Clamped((b * f - c * e) / denominator) : 0;
    double v = e > 0 ? (b * u + f) / e : 0;
    if (v < 0 || v > 1 || e == 0) {
        v = Clamped(v);
        u = a > 0 ? Clamped((b * v - c) / a) : 0;
    }
    const Point gap = between + d1 * u - d2 * v;
    return gap.Dot(gap);
}

// Whether the segment passes through the interior of the triangle.
bool Pierces(const Point& from, const Point& to, const Triangle& t) {
    const Point normal = Point::Cross(t.b - t.a, t.c - t.a);
    const double before = normal.Dot(from - t.a);
    const double after = normal.Dot(to - t.a);
    if (before * after >= 0) {
        return false;
    }
    const Point at = from + (to - from) * (before / (before - after));
    const auto inside = [&](const Point& u, const Point& v) {
        return normal.Dot(Point::Cross(v - u, at - u)) >= 0;
    };
    return inside(t.a, t.b) && inside(t.b, t.c) && inside(t.c, t.a);
}

} // namespace

double SquareDistance(const Triangle& a, const Triangle& b) {
    const Corners ca = CornersOf(a);
    const Corners cb = CornersOf(b);
    double least = SquareDistance(ca[0], b);
    for (std::size_t i = 0; i < 3; ++i) {
        if (Pierces(ca[i], ca[(i + 1) % 3], b) || Pierces(cb[i], cb[(i + 1) % 3], a)) {
            return 0;
        }
        least = std::min({least, SquareDistance(ca[i], b), SquareDistance(cb[i], a)});
        for (std::size_t k = 0; k < 3; ++k) {
            least = std::min(least, SegmentSquareDistance(ca[i], ca[(i + 1) % 3], cb[k], cb[(k + 1) % 3]));
        }
    }
    return least;
}

double SquareDistanceToBox(const Triangle& triangle, const Point& low, const Point& high) {
    const Point ownLow = triangle.a.cwiseMin(triangle.b).cwiseMin(triangle.c);
    const Point ownHigh = triangle.a.cwiseMax(triangle.b).cwiseMax(triangle.c);
    return BVH_Tools<double, 3>::BoxBoxSquareDistance(ownLow, ownHigh, low, high);
}
