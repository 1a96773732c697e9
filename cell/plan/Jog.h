#pragma once

#include <cell/Planner.h>
#include <cell/text/Units.h>
#include <memory>
#include <planning/CarriedArm.h>
#include <string>
#include <vector>

namespace cell {

/// One step by hand.
inline constexpr double JogTurn = 5 * RadiansPerDegree;
inline constexpr double JogSlide = 50; // mm

/// Moves a cell by hand, one axis at a time: joints, rails and positioners within their limits, then the tool
/// centres along and about the world's axes and their own.
class Jog {
public:
    /// Takes the systems at zero.
    explicit Jog(const Cell& cell_);

    /// Chooses the axis `offset` places on, round about.
    void Next(int offset);
    /// Chooses an axis by its number in the list, from 0; one that is not there changes nothing.
    void Choose(std::size_t axis);
    /// Moves the chosen axis by some steps: 5 degrees or 50 mm, a tenth of that when fine. It stops at its
    /// limit; a tool centre stays where no joint values follow it, and the text says why.
    void Move(int steps, bool fine);
    /// Brings everything back to zero.
    void Reset();
    /// Goes on from a step of a motion.
    void TakeOver(PlannedMotion& planned, std::size_t step);

    bool HasAxes() const { return !axes.empty(); }
    /// The chosen axis with its value and limits, for people.
    std::string Text();

private:
    struct Axis {
        std::size_t system;
        EntityName entity;
        std::size_t place; ///< of the value; of a tool centre: along X, Y, Z, about X, Y, Z
        std::string owner;
        const LinkRod* link; ///< null for a tool centre
        bool inTool = false; ///< a tool centre moves by its own axes
    };

    void Add(std::size_t system, EntityName entity, const std::string& owner,
             const std::vector<const LinkRod*>& links);
    void AddTool(std::size_t system);
    void MoveTool(const Axis& axis, double step);
    std::string ToolText(const Axis& axis);

    const Cell& cell;
    std::vector<GrpState> states; ///< one a system, in the cell's order
    std::vector<Axis> axes;
    std::vector<std::unique_ptr<planning::CarriedArm>> arms; ///< one a system; null without a solver
    std::string obstacle;                                    ///< why the tool centre did not follow
    std::size_t chosen = 0;
};

} // namespace cell
