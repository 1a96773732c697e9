#pragma once

#include <functional>
#include <planning/CarriedArm.h>
#include <string>
#include <vector>

namespace planning {

/// A way of the tool centre in the world, from 0 to 1.
struct ToolWay {
    std::function<Rigid(double t)> pose;                  ///< X_WT
    std::function<std::vector<double>(double t)> carrier; ///< values of the carrier's axes
};

/// Why a way cannot be followed, and from where on.
struct PLANNING_EXPORT Obstacle {
    enum class Kind { OutOfReach, Limit, Singularity, Configuration };
    Kind kind;
    double t;              ///< the way is good up to here, within 1e-3 of its length
    double excess = 0;     ///< out of reach: by how much, mm
    std::size_t joint = 0; ///< limit: of which joint, from 0
    /// In words, without the place.
    std::string Text() const;
};

/// Follows ways of the tool centre with joint values that do not jump.
class PLANNING_EXPORT PoseFollower {
public:
    /// @param start joint values at the way's beginning, rad.
    PoseFollower(const CarriedArm& arm_, const ToolWay& way_, std::vector<double> start);

    /// Goes on to a place of the way, `to` not before the last one.
    /// @return whether it got there; otherwise Why() says what is in the way.
    bool Follow(double to);
    /// Joint values at the place that was reached last.
    const std::vector<double>& Values() const { return values; }
    const Obstacle& Why() const { return why; }

private:
    bool Step(double to);
    Obstacle Explain(double to) const;

    const CarriedArm& arm;
    const ToolWay& way;
    std::vector<double> values;
    double at = 0;
    Obstacle why{};
};

} // namespace planning
