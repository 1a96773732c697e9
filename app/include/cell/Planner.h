#pragma once

#include <cell/Cell.h>
#include <functional>
#include <json/value.h>
#include <vector>

namespace cell {

/// A motion with every state of it and what the arm did on the way.
struct PlannedMotion {
    const Motion* motion;
    std::vector<GrpState> states;
    std::vector<gp_Pnt> tcpPath; ///< world position (mm) of the tool centre at each state
    double jointTravel = 0;      ///< sum over states of the largest joint change, rad
    double tcpLength = 0;        ///< mm
};

/// Told how many states of how many have been applied.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

/// Plans every motion and applies each state to its robot. States that the interpolation left without a pose
/// get the tool centre that the robot then has. The robots end at zero.
std::vector<PlannedMotion> PlanMotions(const Cell& cell, const Progress& progress);

/// {"cell", "motions": [{"name", "states": [state, ...]}]}, each state in its own form.
Json::Value TraceToJson(const Cell& cell, std::vector<PlannedMotion>& plan);

} // namespace cell
