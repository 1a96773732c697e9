#pragma once

#include <array>
#include <cstddef>
#include <type_traits>
#include <vector>

/// The points that a robot's tool centre reaches, computed from its table, limits and tool.
///
/// All results are in the robot's base frame, millimetres. The arm has six rows (or seven, with a coupled
/// wrist whose sixth value is minus its fifth). The limits of joint 1 are not used: it turns the whole
/// section.
namespace WorkSpace {

/// Input of the reachability computation. Lengths in millimetres but for the tool offset,
/// which is in metres; angles in radians. The layout is exchanged in memory: keep order and types.
struct Robot {
    double toolOffset[3] = {};             ///< tool origin in the frame of the last row, metres
    double toolRotation[9] = {};           ///< row by row
    std::vector<std::array<double, 4>> dh; ///< a, alpha, d, theta per row, proximal convention
    double jointMin[9] = {};               ///< rad, one a row of the table
    double jointMax[9] = {};               ///< rad
    double externalLimits[3][2] = {};      ///< (min, max) of the carrier's axes
    double base[12] = {};                  ///< placement, 3 rows of rotation (scaled) and translation
    double ratio = 0.7;                    ///< part of the stretched arm's length that works well
    bool upright = true;                   ///< false: the robot hangs upside down
    int armStructureCode = 0;              ///< 0 not stated, 1 and 2 the two arm structures
    int systemType = 0; ///< 0 plain robot, 3 with additional axes, 4 with fewer values than joints
};

static_assert(std::is_standard_layout_v<Robot>);
static_assert(sizeof(Robot) == 432 && alignof(Robot) == 8);
static_assert(offsetof(Robot, toolRotation) == 0x018);
static_assert(offsetof(Robot, dh) == 0x060);
static_assert(offsetof(Robot, jointMin) == 0x078);
static_assert(offsetof(Robot, jointMax) == 0x0C0);
static_assert(offsetof(Robot, externalLimits) == 0x108);
static_assert(offsetof(Robot, base) == 0x138);
static_assert(offsetof(Robot, ratio) == 0x198);
static_assert(offsetof(Robot, upright) == 0x1A0);
static_assert(offsetof(Robot, armStructureCode) == 0x1A4);
static_assert(offsetof(Robot, systemType) == 0x1A8);

/// The profile of the workspace: outer boundary, holes filled, of the points (radius, height) that the tool
/// centre reaches. Closed (the last entry repeats the first), simple, counter-clockwise, radius never
/// negative. No reachable point lies outside by more than 1 % of the reach, and no vertex lies farther than
/// that from a reachable point.
/// @return {radius, height} per vertex, mm.
/// @throws std::invalid_argument for a table that is not six or seven rows, a number that is not finite, a
/// range whose minimum exceeds its maximum, or an arm that reaches one point only.
std::vector<std::vector<double>> GetRobotWorkSpace(const Robot& robot);

/// The largest box of which the tool centre reaches every point, no farther from the shoulder than `ratio` of
/// the stretched arm. Upright: beside the robot, on the side of +Y, symmetric in X. Hanging: around the
/// robot's axis where the arm reaches it, else as upright.
/// @return x, y, z of one corner, then of the opposite one, mm; zeros where no box fits.
/// @throws std::invalid_argument as GetRobotWorkSpace.
std::array<double, 6> GetInvertedRobotWorkSpace(const Robot& robot);

/// Shoulder offset from the robot's axis, lateral offset, shoulder height, and the reach: the shoulder offset
/// plus the greatest distance of the tool centre from the shoulder. Zeros for a record without a table.
/// @throws std::invalid_argument as GetRobotWorkSpace.
std::array<double, 4> GetRobotMaxWorkSpace(const Robot& robot);

/// Whether two records describe the same workspace: fields that the system type does not use may differ.
bool IsEuqal(const Robot& a, const Robot& b);

} // namespace WorkSpace
