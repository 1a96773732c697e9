#pragma once

#include "SeamChoices.h"

#include <planning/Ladder.h>
#include <planning/SeamPlanner.h>

namespace planning {

/// Candidates of a pose and the choices that they come from.
struct SeamRung {
    Rung rung;
    std::vector<std::uint32_t> choice;

    void Clear() {
        rung.Clear();
        choice.clear();
    }
};

/// Makes the candidates of choices: every arm shape with every whole turn within the limits, and what each
/// costs where it is.
class SeamRungs {
public:
    SeamRungs(const CarriedArm& arm_, const SeamRules& rules_, const SeamChoices& choices_, const Seam& seam,
              std::span<const double> from);

    static constexpr int AnyGroup = -1;
    /// Adds the candidates of choices (`from`) at a pose. @param share length of the seam (mm) that the pose
    /// stands for. @param group of the candidates, or any. @param why counts what is lost; may be null.
    void Add(std::size_t pose, std::span<const Choice> from, double share, int group, SeamRung& out,
             NoWay* why = nullptr) const;

    /// Of the way through the air to the values of the first pose.
    double StartCost(const double* values) const;
    /// Rules of a step over `stride` poses.
    StepRules Steps(double stride) const;
    std::size_t Axes() const { return arm.Arm().Joints() + choices.Outer(); }
    const SeamChoices& Choices() const { return choices; }
    const SeamRules& Rules() const { return rules; }

private:
    struct Place {
        std::size_t pose;
        double share;
        int group;
        Rigid tool; ///< in the frame of the work
        Rigid base; ///< X_BP: the work as the arm's base sees it
        double cost;
    };
    Rigid WorkFromBase(const Choice& choice) const;
    double CostOf(const Place& place, const Choice& choice) const;
    void AddSolution(const Place& place, const Choice& choice, const Solution& solution, SeamRung& out,
                     NoWay* why) const;
    bool IsNear(const Solution& turned) const;
    void AddTurn(const Place& place, const Choice& choice, const Solution& turned, double cost,
                 SeamRung& out) const;
    double LimitCost(const double* values) const;
    bool CanApproach(const Place& place, const Solution& solution) const;
    void CountLost(const Place& place, NoWay& why) const;

    const CarriedArm& arm;
    const SeamRules& rules;
    const SeamChoices& choices;
    double approach;
    double retract;
    std::vector<double> start;
    InverseKinematics unlimited;
    StepRules steps;
    std::vector<std::pair<double, double>> limits; ///< of all axes
    std::vector<double> margins;
};

/// Number of a solution's configuration; one for all of a coupled wrist, whose words may change on the way.
int GroupOf(const InverseKinematics& arm, const Solution& solution);

} // namespace planning
