#pragma once

#include <cell/Cell.h>

namespace cell {

/// The cell's robot of that name, or its only one where the name is empty.
/// @throws InputError naming what there is to choose from.
RobotEntity& ChooseRobot(const Cell& cell, const std::filesystem::path& file, const std::string& name);

} // namespace cell
