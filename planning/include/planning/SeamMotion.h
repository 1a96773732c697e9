#pragma once

#include <planning/SeamPlanner.h>

namespace planning {

/// Several seams in one motion, and where it begins and ends.
struct SeamTask {
    std::vector<Seam> seams; ///< in the order of the motion
    /// Whether each seam may be followed from its end as well, whichever is cheaper with the ways between.
    bool eitherWay = false;
    std::vector<double> start; ///< values of all axes before the first seam; empty: the motion begins there
    std::vector<double> end;   ///< and after the last one
    /// Values to pass between seams: air[k] before seam k, the last after all; may be empty or shorter.
    std::vector<std::vector<std::vector<double>>> air;
};

/// A state of a motion along seams.
struct MotionState {
    /// The part of the motion: through the air, along the tool to a seam, on it, and from it.
    enum class Leg : std::uint8_t { Air, Approach, Work, Retract };
    std::vector<double> values; ///< arm, carrier, holder; rad or mm
    Leg leg = Leg::Air;         ///< part of the motion
    std::size_t seam = 0;       ///< that it belongs to, or comes before
    int pose = -1;              ///< of the seam as it was given; -1 for a state that was added
};

/// The whole motion, or why there is none.
struct SeamMotion {
    std::vector<MotionState> states; ///< empty where a seam has no way
    std::vector<bool> reversed;      ///< which seams are followed from their ends
    double distance = 0;             ///< largest deviation on the seams and the ways to and from them, mm
    double angle = 0;                ///< rad
    double cost = 0;                 ///< of all seams, as SeamCosts counts it
    std::size_t blocked = 0;         ///< seam that has no way, if there are no states
    NoWay why;                       ///< of that seam
};

/// A seam from its end to its start.
PLANNING_EXPORT Seam Reversed(const Seam& seam);

/// Plans all seams and what lies between: straight ways along the tool to and from each seam, joint motion in
/// between, no step longer than the rules allow.
/// @throws std::invalid_argument as SeamPlanner, with "seam K: " before it.
PLANNING_EXPORT SeamMotion PlanMotion(const SeamPlanner& planner, const SeamTask& task);

} // namespace planning
