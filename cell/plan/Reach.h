#pragma once

#include <TopoDS_Shape.hxx>
#include <cell/Cell.h>
#include <vector>

namespace cell {

/// What a robot of a cell reaches, as its workspace builder has it.
struct Reach {
    RobotEntity* robot;
    /// Solids in the world, mm: two revolved halves, or one box or two.
    TopoDS_Shape envelope;
    /// {radius, height} in the robot's own frame, mm; closed.
    std::vector<std::vector<double>> section;
    double longest; ///< shoulder offset and stretched arm, mm
};

/// Builds the envelope of a robot where it stands, and its maximum-reach model.
/// @throws InputError naming what the robot's record lacks, by the file and key that it is filled from.
Reach ReachOf(const Cell& cell, RobotEntity& robot);

/// The robot of that name. @throws InputError with the names that there are.
RobotEntity& RequireRobot(const Cell& cell, const std::string& name);

} // namespace cell
