#include "Collector.h"

#include <algorithm>
#include <numbers>

namespace planning {

namespace {

constexpr double Turn = 2 * std::numbers::pi;
/// Values (rad) outside a limit by rounding alone are set to the limit.
constexpr double LimitRounding = 2e-11;
/// Values (rad) closer than this belong to one solution.
constexpr double SameValues = 1e-8;

// Rounds to a whole number by the precision of a double; std::nearbyint would cost more than the rest.
double Rounded(double number) {
    constexpr double LowestBitIsOne = 6755399441055744.0; // 1.5 * 2^52
    return (number + LowestBitIsOne) - LowestBitIsOne;
}

/// The whole turn of a value within limits that is nearest to a reference; false where there is none.
bool TakeTurn(double& value, const std::pair<double, double>& limit, double reference) {
    const double low = limit.first - LimitRounding;
    const double high = limit.second + LimitRounding;
    double v = value + Turn * Rounded((reference - value) / Turn);
    if (v < low) {
        v += Turn * std::ceil((low - v) / Turn);
    } else if (v > high) {
        v -= Turn * std::ceil((v - high) / Turn);
    }
    value = std::clamp(v, limit.first, limit.second);
    return v >= low && v <= high;
}

} // namespace

bool Collector::IsKnown(const Solution& solution) const {
    return std::any_of(out.begin(), out.end(), [&](const Solution& other) {
        double apart = 0;
        for (std::size_t i = 0; i < model.chain.count; ++i) {
            apart = std::max(apart, std::abs(other.values[i] - solution.values[i]));
        }
        return apart < SameValues;
    });
}

bool Collector::TakeTurns(std::array<double, MaxJoints>& values) const {
    bool within = true;
    for (std::size_t i = 0; i < model.chain.count; ++i) {
        within = TakeTurn(values[i], model.limits[i], reference[i]) && within;
    }
    if (model.coupled) {
        values[5] = -values[4];
    }
    return within;
}

bool Collector::HasTurn(std::size_t joint, double value) {
    const bool within = TakeTurn(value, model.limits[joint], reference[joint]);
    out.excess = within ? out.excess : 0;
    return within;
}

void Collector::AddGuess(const Shape& guess) {
    Shape shape = guess;
    if (Polish(model, pose, shape.values.data())) {
        Add(shape);
    }
}

void Collector::Add(Shape& shape) {
    if (!model.exact && !Polish(model, pose, shape.values.data())) {
        return;
    }
    out.excess = 0;
    Solution solution;
    solution.values = shape.values;
    if (!TakeTurns(solution.values) || out.Full()) {
        return;
    }
    // A solution of the search is verified on the table.
    if (model.coupled && model.exact &&
        !(Polish(model, pose, solution.values.data()) && TakeTurns(solution.values))) {
        return;
    }
    const bool mayRepeat = !model.exact || model.coupled || shape.singular != NotSingular;
    if (mayRepeat && IsKnown(solution)) {
        return;
    }
    solution.configuration = shape.configuration;
    solution.singular = shape.singular;
    solution.smallestSingularValue = shape.singular == NotSingular
                                         ? std::numeric_limits<double>::infinity()
                                         : SmallestSingularValue(model, solution.values.data());
    out.Append(solution);
}

int SolveShoulder(const ArmModel& model, const Vec& point, double lateral, Collector& out,
                  std::array<ShoulderSide, 2>& sides) {
    const double square = point.x * point.x + point.y * point.y;
    const double radius = std::sqrt(square);
    if (radius < std::abs(lateral) - ReachTolerance) {
        out.Missed(std::abs(lateral) - radius);
        return 0;
    }
    const double radial = std::sqrt(std::max(0.0, (radius - lateral) * (radius + lateral)));
    const bool free = radius < ReachTolerance;
    double side = model.front;
    for (ShoulderSide& found : sides) {
        found.radial = side * radial;
        if (free) {
            found.value = out.Near(0) + (side == model.front ? 0 : std::numbers::pi);
            found.c = std::cos(found.value);
            found.s = std::sin(found.value);
        } else {
            found.c = (found.radial * point.x + lateral * point.y) / square;
            found.s = (found.radial * point.y - lateral * point.x) / square;
            found.value = std::atan2(found.s, found.c);
        }
        side = -side;
    }
    return radial > 0 || free ? 2 : 1;
}

int SolveElbow(const PlaneArm& plane, const Planar& target, double sense, Collector& out,
               std::array<ElbowShape, 2>& shapes, bool& singular) {
    const double distance = Abs(target);
    const double stretched = plane.upperLength + plane.foreLength;
    const double folded = plane.upperLength - plane.foreLength;
    const double excess = std::max(distance - stretched, std::abs(folded) - distance);
    if (excess > ReachTolerance) {
        out.Missed(excess);
        return 0;
    }
    const double span = plane.upperLength * plane.foreLength;
    // Heron's formula as a product stays accurate where the arm is nearly stretched or folded.
    const double toStretched = std::max(0.0, (stretched - distance) * (stretched + distance));
    const double toFolded = std::max(0.0, (distance - folded) * (distance + folded));
    const double c = (toFolded - toStretched) / (4 * span);
    const double s = std::sqrt(toStretched * toFolded) / (2 * span);
    singular = s < NearSingular;
    const double angle = std::atan2(s, c);
    double side = sense;
    for (ElbowShape& shape : shapes) {
        const Planar third = Conj(plane.foreFromUpper) * Planar{c, side * s};
        const Planar wrist = plane.upper + third * plane.fore;
        const Planar second = target * Conj(wrist);
        const double length = Abs(second);
        const bool free = length < ReachTolerance * ReachTolerance;
        shape.second = free ? out.Near(1) : Arg(second);
        const Planar turn =
            free ? Planar{std::cos(shape.second), std::sin(shape.second)} : (1 / length) * second;
        shape.both = turn * third;
        shape.third = plane.elbowSense * (side * angle - plane.foreAngle);
        side = -side;
    }
    return s > 0 ? 2 : 1;
}

} // namespace planning
