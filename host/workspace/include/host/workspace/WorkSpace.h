#pragma once

#include <array>
#include <cstddef>
#include <type_traits>
#include <vector>

/// Which points a robot's tool centre reaches, from its table, limits and tool alone.
///
/// All results are in the robot's base frame, millimetres. The arm has six rows (or seven, with a coupled
/// wrist whose sixth value is minus its fifth); joint 1 turns the whole and takes no part.
namespace WorkSpace {

/// What the reachability computation is told about a robot. Lengths in millimetres but for the tool offset,
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
    bool upright = true;
    int armStructureCode = 0;
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

/// Outline of the reachable points (radius, height): the outer boundary, holes filled. Closed (the last entry
/// repeats the first), simple, counter-clockwise, radius never negative. Nothing reachable lies outside by
/// more than 1 % of the reach, and no vertex lies farther than that from a reachable point.
/// @return {radius, height} per vertex, mm.
/// @throws std::invalid_argument for a table that is not six or seven rows, a number that is not finite, a
/// range that is upside down, or an arm that reaches one point only.
std::vector<std::vector<double>> GetRobotWorkSpace(const Robot& robot);

/// The largest box that the tool centre reaches throughout, no farther from the shoulder than `ratio` of the
/// stretched arm. Upright: beside the robot, on the side of +Y, as wide to -X as to +X. Hanging: around the
/// robot's axis where the arm reaches it, else as upright.
/// @return x, y, z of one corner, then of the opposite one, mm; zeros where no box fits.
/// @throws std::invalid_argument as GetRobotWorkSpace.
std::array<double, 6> GetInvertedRobotWorkSpace(const Robot& robot);

/// Shoulder offset from the robot's axis, lateral offset, shoulder height, and the reach: the shoulder offset
/// plus the greatest distance of the tool centre from the shoulder. Zeros for a record without a table.
/// @throws std::invalid_argument as GetRobotWorkSpace.
std::array<double, 4> GetRobotMaxWorkSpace(const Robot& robot);

/// Whether two records describe the same workspace: what the system type makes no use of may differ.
bool IsEuqal(const Robot& a, const Robot& b);

} // namespace WorkSpace
