#pragma once

#include <cell/documents/ArmFile.h>
#include <cstdint>
#include <mechanism/RobotEntity.h>
#include <memory>
#include <string>

namespace cell {

/// Builds a robot from a description: one link for each joint, with its bodies, limits and the flange, then
/// the robot proper, whose links follow its table.
///
/// The coupling record of the hash is filled as well, since the robot's limits are read along it.
/// @throws InputError when the joints do not fit the arm structure, so that the table would stand for another
///         arm.
std::unique_ptr<RobotEntity> BuildArm(const ArmDescription& arm, const std::string& name, std::uint64_t hash);

/// A hash for a robot that was given none, from its name; never 0.
std::uint64_t HashOfName(const std::string& name);

} // namespace cell
