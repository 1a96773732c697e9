#pragma once

#include <host/tools/Rigid.h>
#include <json/value.h>
#include <string>
#include <vector>

namespace cell {

/// One JSON object of a line that a command reads from a pipe, strictly.
/// @param place names the line in reports. @throws InputError for text that is no object.
Json::Value ParseLine(const std::string& line, const std::string& place);

/// The pose under "FRAME_origin_mm" (3 numbers) and "FRAME_rotation" (3 rows of 3), as forward kinematics
/// prints them.
/// @throws InputError naming line and key for what is missing or no rigid transform.
Rigid ReadPose(const Json::Value& line, const std::string& frame, const std::string& place);

/// The sets of values (degrees) under "solutions", as inverse kinematics prints them.
/// @throws InputError naming line and key.
std::vector<std::vector<double>> ReadSolutions(const Json::Value& line, const std::string& place);

} // namespace cell
