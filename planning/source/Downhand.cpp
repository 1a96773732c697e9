#include "Downhand.h"

#include <algorithm>
#include <limits>
#include <numbers>

namespace planning {

namespace {

constexpr double Pi = std::numbers::pi;
constexpr double Nothing = 1e-12;
/// The bounds of an interval are kept by so much (rad) more than rounding.
constexpr double Inside = 1e-9;
constexpr Vec Vertical{0, 0, 1};

struct Interval {
    double low, high;
};

/// Where p + q cos(v - phase) lies within low to high, and at what v it is nearest to `best`.
struct Wave {
    double p, q, phase;

    void Within(double low, double high, std::vector<Interval>& out) const {
        if (q < Nothing) {
            if (p >= low && p <= high) {
                out.push_back({phase - Pi, phase + Pi});
            }
            return;
        }
        const double most = std::min(1.0, (high - p) / q);
        const double least = std::max(-1.0, (low - p) / q);
        if (most < least) {
            return;
        }
        const double a = std::acos(most);
        const double b = std::acos(least);
        if (a == 0) {
            out.push_back({phase - b, phase + b});
        } else if (b >= Pi) {
            out.push_back({phase + a, phase + 2 * Pi - a});
        } else {
            out.push_back({phase + a, phase + b});
            out.push_back({phase - b, phase - a});
        }
    }
};

/// The angle of `a`, turned by v about the axis, to the other direction, as a wave of its cosine.
Wave TurnedDot(const Vec& axis, const Vec& a, const Vec& other) {
    const double along = Dot(axis, a) * Dot(axis, other);
    const double c = Dot(a, other) - along;
    const double s = Dot(Cross(axis, a), other);
    return {along, std::hypot(c, s), std::atan2(s, c)};
}

/// Places in an interval at most a step apart, its middle among them, with every whole turn in the bounds.
template <typename Each>
void Sample(const Interval& interval, const Downhand::Axis& bounds, Each&& each) {
    const double half = (interval.high - interval.low) / 2;
    const double middle = (interval.high + interval.low) / 2;
    const bool round = half > Pi - Inside;
    const int parts = std::max(1, static_cast<int>(std::ceil((half - Inside) / bounds.step)));
    for (int k = -parts; k <= (round ? parts - 1 : parts); ++k) {
        const double v = middle + half * k / parts;
        const double first = v + 2 * Pi * std::ceil((bounds.low - v) / (2 * Pi));
        for (double turned = first; turned <= bounds.high; turned += 2 * Pi) {
            each(turned);
        }
        if (half < Inside) {
            return;
        }
    }
}

} // namespace

Downhand::Downhand(const CarrierChain& chain_, const Rigid& work_, std::vector<std::size_t> axes_)
    : chain(chain_), work(work_), axes(std::move(axes_)) {}

void Downhand::Values(const Vec& up, std::vector<double>& values, double within,
                      const std::vector<Axis>& bounds, std::vector<std::array<double, 2>>& out) const {
    for (const std::size_t axis : axes) {
        values[axis] = 0;
    }
    const double inside = within - Inside;
    const auto directionOf = [&](std::size_t k) {
        const auto d = chain.DirectionAt(axes[k], values);
        return Vec{d[0], d[1], d[2]};
    };
    const Vec atZero = Rotate(chain.FlangeAt(values) * work, up);
    const Vec first = directionOf(0);
    std::vector<Interval> intervals;
    std::vector<Interval> inner;
    const auto sampleFirst = [&](const Vec& turned, double second) {
        inner.clear();
        TurnedDot(first, turned, Vertical).Within(std::cos(inside), 2, inner);
        for (const Interval& interval : inner) {
            Sample(interval, bounds[0], [&](double value) { out.push_back({value, second}); });
        }
    };
    if (axes.size() == 1) {
        sampleFirst(atZero, 0);
        return;
    }
    // The first axis keeps the angle between its own direction and the one that it turns.
    const Vec second = directionOf(1);
    const double wanted = std::acos(std::clamp(Dot(first, Vertical), -1.0, 1.0));
    TurnedDot(second, atZero, first)
        .Within(std::cos(std::min(Pi, wanted + inside)), std::cos(std::max(0.0, wanted - inside)), intervals);
    for (const Interval& interval : intervals) {
        Sample(interval, bounds[1], [&](double value) {
            sampleFirst(Turned(second, std::cos(value), std::sin(value), atZero), value);
        });
    }
}

bool Downhand::Project(const Vec& up, std::span<double> values, double within, const Axis& bounds) const {
    double& value = values[axes[0]];
    const double wanted = value;
    value = 0;
    const auto d = chain.DirectionAt(axes[0], values);
    const Vec atZero = Rotate(chain.FlangeAt(values) * work, up);
    std::vector<Interval> intervals;
    TurnedDot({d[0], d[1], d[2]}, atZero, Vertical).Within(std::cos(within - Inside), 2, intervals);
    double nearest = std::numeric_limits<double>::infinity();
    for (const Interval& interval : intervals) {
        const double turn = 2 * Pi * std::round((wanted - (interval.low + interval.high) / 2) / (2 * Pi));
        for (const double more : {turn - 2 * Pi, turn, turn + 2 * Pi}) {
            const double low = std::max(interval.low + more, bounds.low);
            const double high = std::min(interval.high + more, bounds.high);
            const double there = std::clamp(wanted, low, std::max(low, high));
            if (low <= high && std::abs(there - wanted) < std::abs(nearest - wanted)) {
                nearest = there;
            }
        }
    }
    value = nearest;
    return std::isfinite(nearest);
}

double AngleToVertical(const CarrierChain& chain, const Rigid& work, const Vec& up,
                       std::span<const double> values) {
    const Vec world = Rotate(chain.FlangeAt(values) * work, up);
    return std::atan2(std::hypot(world.x, world.y), world.z);
}

} // namespace planning
