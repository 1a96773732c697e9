#pragma once

#include <cell/Planner.h>
#include <string>
#include <vector>

namespace cell {

/// Moves the axes of a cell by hand, one at a time: joints, rails and positioners, within their limits.
class Jog {
public:
    /// Takes the systems at zero.
    explicit Jog(const Cell& cell_);

    /// Chooses the axis `offset` places on, round about.
    void Next(int offset);
    /// Chooses an axis by its number in the list, from 0; one that is not there changes nothing.
    void Choose(std::size_t axis);
    /// Moves the chosen axis by some steps: 5 degrees or 50 mm, a tenth of that when fine. It stops at its
    /// limit.
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
        std::size_t place;
        std::string owner;
        const LinkRod* link;
    };

    void Add(std::size_t system, EntityName entity, const std::string& owner,
             const std::vector<const LinkRod*>& links);

    const Cell& cell;
    std::vector<GrpState> states; ///< one a system, in the cell's order
    std::vector<Axis> axes;
    std::size_t chosen = 0;
};

} // namespace cell
