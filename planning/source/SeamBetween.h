#pragma once

#include "Vec.h"

#include <planning/SeamPlanner.h>

namespace planning {

/// How far the tool leaves its path between states while all values go evenly from one to the next.
struct Deviation {
    double distance = 0; ///< mm
    double angle = 0;    ///< of the tool's axis, rad
};

/// Largest step of each axis from pose to pose: the rules' own, or 10 degrees and 50 mm.
std::vector<double> StepLimits(const CarriedArm& arm, const SeamRules& rules);

/// What a change of each axis weighs: SeamCosts over the square of what the axis moves.
std::vector<double> StepWeights(const CarriedArm& arm, const SeamRules& rules);

/// Looks at the ways between states, and adds states where they leave the path. The path is the straight line
/// between the tool centres, the tool's axis turning evenly in one plane.
class SeamBetween {
public:
    SeamBetween(const CarriedArm& arm_, const SeamRules& rules_)
        : arm(arm_), rules(rules_), limits(StepLimits(arm_, rules_)) {}

    /// Largest deviation at 24 places of the step.
    Deviation Measure(const SeamState& a, const SeamState& b) const;
    /// Appends `b` and before it what has to be added after the last state of `out`.
    /// @param most the largest deviation so far, brought up to date.
    void Append(std::vector<SeamState>& out, const SeamState& b, Deviation& most) const;
    /// The state that stands halfway: tool halfway on the path, carriers halfway, the arm in the shape of
    /// both. @return no values where the arm cannot.
    SeamState Halfway(const SeamState& a, const SeamState& b) const;
    /// Joint values nearest to `near` for the tool in the work's frame; empty where there are none within
    /// `within` (rad).
    std::vector<double> Solve(const Rigid& tool, const std::vector<double>& near, double within) const;

private:
    bool IsStep(const SeamState& a, const SeamState& b) const;
    void Fill(std::vector<SeamState>& out, const SeamState& a, const SeamState& b, int depth,
              Deviation& most) const;

    const CarriedArm& arm;
    const SeamRules& rules;
    std::vector<double> limits;
};

} // namespace planning
