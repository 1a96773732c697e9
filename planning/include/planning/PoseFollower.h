#pragma once

#include <functional>
#include <planning/CarriedArm.h>
#include <string>
#include <vector>

namespace planning {

/// A path of the tool centre in the world, parametrised from 0 to 1.
struct ToolWay {
    std::function<Rigid(double t)> pose;                  ///< X_WT
    std::function<std::vector<double>(double t)> carrier; ///< values of the carrier's axes
};

/// Why a path cannot be followed, and from where on.
struct PLANNING_EXPORT Obstacle {
    /// What prevents the motion.
    enum class Kind { OutOfReach, Limit, Singularity, Configuration };
    Kind kind;             ///< what prevents the motion
    double t;              ///< the path can be followed up to here, to 1e-3 of its length
    double excess = 0;     ///< out of reach: by how much, mm
    std::size_t joint = 0; ///< limit: of which joint, from 0
    /// A text that says so, without the place.
    std::string Text() const;
};

/// Follows a path of the tool centre with joint values that do not jump.
class PLANNING_EXPORT PoseFollower {
public:
    /// @param arm_, way_ are referred to, not copied. @param start joint values at the path's beginning, rad.
    PoseFollower(const CarriedArm& arm_, const ToolWay& way_, std::vector<double> start);

    /// Continues to a place of the path. @param to 0 to 1, not less than in the last call.
    /// @return whether it was reached; otherwise Why() gives the reason.
    bool Follow(double to);
    /// Joint values at the place that was reached last.
    const std::vector<double>& Values() const { return values; }
    /// Why the last Follow ended early.
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
