#include <planning/Jacobian.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace planning {

namespace {

using Row = std::array<double, MaxAxes>;

constexpr int MostSweeps = 30;
constexpr double Square = 1e-16; // cosine between orthogonal rows

/// Rotates two rows in their plane until they are orthogonal. @return whether they were not.
bool MakeSquare(Row& a, Row& b, std::size_t count) {
    const double aa = std::inner_product(a.begin(), a.begin() + count, a.begin(), 0.0);
    const double bb = std::inner_product(b.begin(), b.begin() + count, b.begin(), 0.0);
    const double ab = std::inner_product(a.begin(), a.begin() + count, b.begin(), 0.0);
    if (!(std::abs(ab) > Square * std::sqrt(aa * bb))) {
        return false;
    }
    const double angle = 0.5 * std::atan2(2 * ab, aa - bb);
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = a[i];
        a[i] = c * x + s * b[i];
        b[i] = c * b[i] - s * x;
    }
    return true;
}

} // namespace

// One-sided Jacobi: once all rows are orthogonal their lengths are the singular values, small ones to full
// relative accuracy.
std::array<double, 6> Jacobian::SingularValues(double length) const {
    std::array<Row, 6> rows{};
    for (std::size_t i = 0; i < count; ++i) {
        for (std::size_t row = 0; row < 6; ++row) {
            rows[row][i] = columns[i][row] / (row < 3 ? length : 1);
        }
    }
    bool turned = true;
    for (int sweep = 0; sweep < MostSweeps && turned; ++sweep) {
        turned = false;
        for (std::size_t a = 0; a < 6; ++a) {
            for (std::size_t b = a + 1; b < 6; ++b) {
                turned = MakeSquare(rows[a], rows[b], count) || turned;
            }
        }
    }
    std::array<double, 6> values{};
    std::transform(rows.begin(), rows.end(), values.begin(), [](const Row& row) {
        return std::sqrt(std::inner_product(row.begin(), row.end(), row.begin(), 0.0));
    });
    std::sort(values.begin(), values.end(), std::greater<>());
    return values;
}

double Jacobian::Manipulability(double length) const {
    const std::array<double, 6> values = SingularValues(length);
    return std::accumulate(values.begin(), values.end(), 1.0, std::multiplies<>());
}

} // namespace planning
