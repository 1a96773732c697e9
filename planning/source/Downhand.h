#pragma once

#include "Vec.h"

#include <planning/CarriedArm.h>
#include <utility>
#include <vector>

namespace planning {

/// Values of the last one or two of a holder's axes that bring a direction of the work near to the vertical,
/// in closed form: of two axes, the second has the intervals in which the first can do the rest.
class Downhand {
public:
    /// @param chain_ of what holds the work; `work_` the work's frame on its flange.
    /// @param axes_ positions of one or two axes that turn, in the order of the chain.
    Downhand(const CarrierChain& chain_, const Rigid& work_, std::vector<std::size_t> axes_);

    struct Axis {
        double low, high, step;
    };
    /// Value pairs (of one axis: singles) within the bounds, at most a step apart, whose angle to the
    /// vertical is at most `within`. @param values of all axes; those of the pair are not read.
    void Values(const Vec& up, std::vector<double>& values, double within, const std::vector<Axis>& bounds,
                std::vector<std::array<double, 2>>& out) const;
    /// Moves the first of the axes as little as it takes to bring the direction that near to the vertical.
    /// @return whether its bounds let it.
    bool Project(const Vec& up, std::span<double> values, double within, const Axis& bounds) const;

private:
    const CarrierChain& chain;
    Rigid work;
    std::vector<std::size_t> axes;
};

/// Angle of a direction of the work to the vertical.
double AngleToVertical(const CarrierChain& chain, const Rigid& work, const Vec& up,
                       std::span<const double> values);

} // namespace planning
