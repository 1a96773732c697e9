#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <planning/Export.h>
#include <vector>

namespace planning {

/// Candidates of one pose: values of all axes, row by row, what each costs by itself, and its group; a way
/// stays in one group.
struct Rung {
    std::size_t axes = 0;             ///< values in a row
    std::vector<double> values;       ///< one row a candidate
    std::vector<double> costs;        ///< one a candidate
    std::vector<std::uint8_t> groups; ///< one a candidate

    /// Number of candidates.
    std::size_t size() const { return costs.size(); }
    /// Values of a candidate, `axes` of them.
    const double* Row(std::size_t i) const { return values.data() + i * axes; }
    /// Drops all candidates and keeps their memory.
    void Clear() {
        values.clear();
        costs.clear();
        groups.clear();
    }
};

/// Largest step of every axis between neighbouring rungs, and weights of the squares of the steps.
struct StepRules {
    std::vector<double> limits;  ///< one an axis, rad or mm
    std::vector<double> weights; ///< one an axis
};

/// Cost of a step: the sum of weight * (b - a)^2, over the length; infinity past a limit.
/// @param most costs above this may be given as infinity.
inline double StepCost(const StepRules& rules, const double* a, const double* b, double length,
                       double most = std::numeric_limits<double>::infinity()) {
    constexpr double Rounding = 1 + 1e-9;
    const double room = most * length * Rounding;
    double sum = 0;
    for (std::size_t i = 0; i < rules.limits.size(); ++i) {
        const double step = b[i] - a[i];
        if (!(std::abs(step) <= rules.limits[i]) || sum > room) {
            return std::numeric_limits<double>::infinity();
        }
        sum += rules.weights[i] * step * step;
    }
    return sum / length;
}

/// The cheapest way through rungs by dynamic programming, rung by rung. Of a rung only the candidates that
/// can be stepped to are looked at: those of the last rung lie in cells as wide as the step limits. Kept are
/// the last rung and four bytes a candidate. The result is that of looking at all pairs, to the bit.
class PLANNING_EXPORT Ladder {
public:
    /// A ladder without rungs.
    Ladder();
    ~Ladder();
    /// Takes over the rungs of another ladder, which may only be destroyed or assigned to afterwards.
    Ladder(Ladder&& other) noexcept;
    /// The same.
    Ladder& operator=(Ladder&& other) noexcept;

    /// Adds the next rung, at a distance above 0 from the last one.
    /// @param rules of the step to it. @return how many of its candidates can be reached; where none can,
    /// the ladder stays as it was.
    std::size_t Append(const Rung& rung, double length, const StepRules& rules);
    /// At the last rung, any candidate may be changed for any other at a cost.
    void AllowChange(double cost);

    /// A candidate of the way.
    struct Stop {
        std::size_t rung;        ///< from 0
        std::uint32_t candidate; ///< of the rung, from 0
        /// Whether both numbers are equal.
        bool operator==(const Stop&) const = default;
    };
    /// Cost of the cheapest way to the last rung.
    double Cost() const;
    /// One stop a rung, two where the way changes.
    std::vector<Stop> Way() const;
    /// The rung appended last, with infinity for candidates that cannot be reached.
    const Rung& Last() const;
    /// Cost of the cheapest way to each candidate of the last rung; infinity where there is none.
    const std::vector<double>& Totals() const;

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace planning
