#pragma once

#include <cell/Cell.h>
#include <functional>
#include <json/forwards.h>
#include <mechanism/ContextState.h>
#include <vector>

namespace cell {

/// A motion with every state of it and what the arm did on the way.
struct PlannedMotion {
    const Motion* motion;
    std::vector<GrpState> states = {};       ///< of a motion of one system
    std::vector<ContextState> contexts = {}; ///< of motions that run together: one a step
    std::size_t removed = 0;                 ///< states that the interpolation gave and nobody needs
    std::vector<gp_Pnt> tcpPath = {};        ///< world position (mm) of the tool centre at each state
    double jointTravel = 0;                  ///< sum over states of the arm's largest joint change, rad
    double tcpLength = 0;                    ///< mm

    std::size_t Steps() const { return contexts.empty() ? states.size() : contexts.size(); }
};

/// Told how many states of how many have been applied; may be empty.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

/// Plans every motion, drops states that repeat others, and applies each state to its system. States that the
/// interpolation left without a pose get the tool centre that the robot then has. The systems end at zero.
CELL_EXPORT std::vector<PlannedMotion> PlanMotions(const Cell& cell, const Progress& progress);

/// Moves the mechanisms of the cell to a step of a motion.
CELL_EXPORT void MoveToStep(const Cell& cell, PlannedMotion& planned, std::size_t step);

/// {"cell", "motions": [{"name", "states": [state, ...]}]}, each state in its own form; motions that run
/// together have "contexts" in place of "states".
CELL_EXPORT Json::Value TraceToJson(const Cell& cell, std::vector<PlannedMotion>& plan);

} // namespace cell
