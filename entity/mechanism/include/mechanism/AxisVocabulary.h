#pragma once

#include <cstdint>
#include <mechanism/Export.h>
#include <string>
#include <vector>

/// An entity of a system, read against the system's GrpConfig: 0 .. robotNum - 1 are its robots, the values
/// from there to 7 all name the pedestal, 8 + k is bench k. Values between the enumerators are valid.
enum EntityName : std::int32_t { Robot = 0, Pedestal = 4, Bench = 8 };

/// An axis of an entity: the value modulo 10 is its place in the entity, the rest its family.
enum AxisName : std::int32_t {
    ARM_J1 = 0,
    ARM_J2 = 1,
    ARM_J3 = 2,
    ARM_J4 = 3,
    ARM_J5 = 4,
    ARM_J6 = 5,
    Tool = 6,
    Gantry_X1 = 10,
    Gantry_Y1 = 11,
    Gantry_Z1 = 12,
    axisX1 = 100,
    axisY1 = 101,
    axisZ1 = 102
};

/// What a point of a path commands; only MoveCmdLogical carries a text.
enum RobotMoveCmdType : std::int32_t { MoveCmdDefault = 0, MoveCmdLogical = 2 };

/// How a point is reached; hosts number their own models from 1.
enum MoveModel : std::int32_t { MoveModelDefault = 0 };

/// What a trace records; hosts number their own kinds from 1.
enum TraceType : std::int32_t { TraceDefault = 0 };

/// How a system's number of values compares with the joints of one of its robots.
enum PedestalType : std::int32_t {
    PedestalTypeNone = 0,       ///< one robot's joints and nothing else
    PedestalTypeAdditional = 3, ///< more values than one robot has joints
    PedestalTypeReduced = 4     ///< fewer values than one robot has joints
};

const std::vector<std::int32_t> RobotAxisCodes = {0, 1, 2, 3, 4, 5};
/// The order is that of the axes on the mechanism, not of their codes.
const std::vector<std::int32_t> AxisCodeSet5 = {14, 16, 15, 17, 19};
const std::vector<std::int32_t> AxisCodeSet3 = {14, 15, 16};
const std::vector<std::string> RobotJointNames = {"ARM_J1", "ARM_J2", "ARM_J3", "ARM_J4", "ARM_J5", "ARM_J6"};
const std::vector<std::string> CartesianAxisNames = {"axisX1", "axisY1", "axisZ1"};
const std::vector<std::string> RobotLinkNames = {"Pedestal", "ARM_J0", "ARM_J1", "ARM_J2", "ARM_J3",
                                                 "ARM_J4",   "ARM_J5", "ARM_J6", "Tool"};

/// The axis that a text names, by exact match with the enumerators' names.
/// @return Tool for every other text too: to detect an unknown name, compare the text itself.
MECHANISM_EXPORT AxisName StringToAxis(const std::string& text);
