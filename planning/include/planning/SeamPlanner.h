#pragma once

#include <planning/CarriedArm.h>
#include <planning/Seam.h>
#include <string>

namespace planning {

/// What holds for all seams of a motion.
struct SeamRules {
    Rigid work;                ///< X_HP: frame of the work on what holds it (in the world where nothing does)
    std::vector<double> steps; ///< largest step of each axis from pose to pose (arm, carrier, holder), rad or
                               ///< mm; empty: 10 degrees, 50 mm
    double distance = 0.1;     ///< by which the tool centre may leave the path between poses, mm
    double angle = 0.2 * DegreeInRadians; ///< and the tool's axis its direction, rad
    double singular = 0.002;              ///< least manipulability, lengths in units of the reach
    SeamCosts costs;                      ///< what is made small
};

/// A place of the planned way.
struct SeamState {
    std::vector<double> values; ///< arm, carrier, holder; rad or mm
    Rigid tool;                 ///< X_PT: what was asked of the tool centre, in the frame of the work
    int pose = -1;              ///< of the seam; -1 for one that was added between two
    bool changed = false;       ///< the arm has left the seam and come back in another configuration
};

/// Why there is no way: what is possible, and what killed the candidates of the pose after it.
struct NoWay {
    std::size_t pose = 0;            ///< first one that the way from the seam's start does not get to
    std::size_t first = 0;           ///< longest stretch that could be followed by itself: from here
    std::size_t last = 0;            ///< to here; before `first` where no pose can be reached
    std::size_t reach = 0;           ///< candidates out of reach
    std::vector<std::size_t> limits; ///< shapes past the limit of each joint
    std::size_t singular = 0;        ///< candidates nearer to a singularity than the rules allow
    std::vector<std::size_t>
        steps;                     ///< candidates that were farther than a step in an axis, before all others
    std::size_t configuration = 0; ///< candidates that no way of their configuration leads to
    std::size_t downhand = 0;      ///< positions of holder and carrier that cannot turn the seam up
    std::size_t approach = 0;      ///< candidates whose way to or from the seam the arm cannot go

    /// "no way past pose 12 of 80; poses 12 to 79 can be followed".
    PLANNING_EXPORT std::string Stretch(std::size_t poses) const;
    /// "34 out of reach, 12 past the limit of joint 5".
    PLANNING_EXPORT std::string Reasons(std::size_t joints) const;
    /// Both in one line.
    std::string Text(std::size_t poses, std::size_t joints) const {
        return Stretch(poses) + "; lost there: " + Reasons(joints);
    }
};

/// The way along one seam, or why there is none.
struct SeamResult {
    std::vector<SeamState> states; ///< empty where there is no way
    double cost = 0;               ///< as SeamCosts counts it
    double distance = 0;           ///< largest of the tool centre from the path between states, mm
    double angle = 0;              ///< and of its axis, rad
    NoWay why;                     ///< where there is no way

    /// Whether there is a way.
    bool Found() const { return !states.empty(); }
};

/// Plans how an arm, what carries it and what holds the work follow a seam together.
class PLANNING_EXPORT SeamPlanner {
public:
    /// Keeps a reference to `arm_`.
    /// @throws std::invalid_argument "PLACE: VALUE, expected EXPECTATION" for rules that make no sense.
    SeamPlanner(const CarriedArm& arm_, SeamRules rules_);

    /// Plans the way along one seam.
    /// @param from values of all axes before the seam, to begin near them; may be empty.
    /// @throws std::invalid_argument as above for a seam that makes no sense.
    SeamResult Plan(const Seam& seam, std::span<const double> from = {}) const;

    /// The arm that was given.
    const CarriedArm& Arm() const { return arm; }
    /// The rules that were given.
    const SeamRules& Rules() const { return rules; }
    /// Axes of arm, carrier and holder.
    std::size_t Axes() const;

private:
    const CarriedArm& arm;
    SeamRules rules;
};

/// The parts of a full set of values.
PLANNING_EXPORT AxisValues Split(const CarriedArm& arm, std::span<const double> values);

} // namespace planning
