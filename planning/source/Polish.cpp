#include "Collector.h"

#include <algorithm>

namespace planning {

namespace {

constexpr int MostSteps = 12;
/// Targeted and required accuracy: lengths in mm, matrix entries.
constexpr double AimLength = 1e-9;
constexpr double MetLength = 5e-8;
constexpr double MetMatrix = 5e-11;

/// Deviation of a flange from its pose: linear (mm), then a small rotation (rad).
std::array<double, 6> ErrorOf(const Rigid& pose, const Rigid& flange) {
    Vec turn;
    for (int i = 0; i < 3; ++i) {
        turn = turn + 0.5 * Cross(Column(flange, i), Column(pose, i));
    }
    const Vec move = Origin(pose) - Origin(flange);
    return {move.x, move.y, move.z, turn.x, turn.y, turn.z};
}

/// Jacobian of the independent joints: a coupled wrist's sixth value moves with its fifth.
std::size_t Independent(const ArmModel& model, Jacobian6& columns) {
    if (!model.coupled) {
        return model.chain.count;
    }
    for (std::size_t i = 0; i < 6; ++i) {
        columns[4][i] -= columns[5][i];
    }
    columns[5] = columns[6];
    return MaxJoints - 1;
}

/// Solves sum of columns * x = b by Gaussian elimination with pivoting. @return false for a singular matrix.
bool SolveSix(Jacobian6& columns, std::array<double, 6>& b) {
    for (std::size_t k = 0; k < 6; ++k) {
        std::size_t pivot = k;
        for (std::size_t row = k + 1; row < 6; ++row) {
            pivot = std::abs(columns[k][row]) > std::abs(columns[k][pivot]) ? row : pivot;
        }
        if (!(std::abs(columns[k][pivot]) > 1e-12)) {
            return false;
        }
        for (std::size_t column = k; column < 6; ++column) {
            std::swap(columns[column][k], columns[column][pivot]);
        }
        std::swap(b[k], b[pivot]);
        for (std::size_t row = k + 1; row < 6; ++row) {
            const double factor = columns[k][row] / columns[k][k];
            for (std::size_t column = k; column < 6; ++column) {
                columns[column][row] -= factor * columns[column][k];
            }
            b[row] -= factor * b[k];
        }
    }
    for (std::size_t k = 6; k-- > 0;) {
        for (std::size_t column = k + 1; column < 6; ++column) {
            b[k] -= columns[column][k] * b[column];
        }
        b[k] /= columns[k][k];
    }
    return true;
}

void Advance(const ArmModel& model, const std::array<double, 6>& step, double* values) {
    for (std::size_t i = 0; i < 6; ++i) {
        values[model.coupled && i == 5 ? 6 : i] += step[i];
    }
    if (model.coupled) {
        values[5] = -values[4];
    }
}

struct Miss {
    double length, matrix;
};

Miss MissOf(const std::array<double, 6>& error) {
    return {std::hypot(error[0], error[1], error[2]), std::hypot(error[3], error[4], error[5])};
}

} // namespace

bool Polish(const ArmModel& model, const Rigid& pose, double* values) {
    std::array<double, MaxJoints> best{};
    double least = std::numeric_limits<double>::infinity();
    Miss miss{};
    for (int step = 0; step < MostSteps; ++step) {
        Rigid flange;
        Jacobian6 columns;
        FlangeJacobian(model.chain, values, flange, columns);
        std::array<double, 6> error = ErrorOf(pose, flange);
        const Miss now = MissOf(error);
        const double size = now.length + model.reach * now.matrix;
        if (size < least) {
            least = size;
            miss = now;
            std::copy_n(values, model.chain.count, best.begin());
        }
        if (size < AimLength || !(size < 2 * least)) {
            break;
        }
        Independent(model, columns);
        if (!SolveSix(columns, error)) {
            break;
        }
        Advance(model, error, values);
    }
    std::copy_n(best.begin(), model.chain.count, values);
    return miss.length <= MetLength && miss.matrix <= MetMatrix;
}

Jacobian IndependentJacobian(const ArmModel& model, const double* values, Rigid& flange) {
    Jacobian6 columns;
    FlangeJacobian(model.chain, values, flange, columns);
    Jacobian jacobian;
    jacobian.count = Independent(model, columns);
    std::copy_n(columns.begin(), jacobian.count, jacobian.columns.begin());
    return jacobian;
}

double SmallestSingularValue(const ArmModel& model, const double* values) {
    Rigid flange;
    return IndependentJacobian(model, values, flange).SingularValues(model.reach).back();
}

} // namespace planning
