#pragma once

#include <array>
#include <vector>

namespace WorkSpace {

/// What the reachability computation is told about a robot. Lengths in millimetres but for the tool offset,
/// which is in metres; angles in radians. The layout is exchanged in memory: keep order and types.
struct Robot {
    double toolOffset[3] = {};             ///< tool origin in the flange frame, metres
    double toolRotation[9] = {};           ///< row by row
    std::vector<std::array<double, 4>> dh; ///< a, alpha, d, theta per row
    double jointMin[9] = {};               ///< rad
    double jointMax[9] = {};               ///< rad
    double externalLimits[3][2] = {};      ///< (min, max) of the carrier's axes
    double base[12] = {};                  ///< placement, 3 rows of rotation (scaled) and translation
    double ratio = 0.7;                    ///< part of the reach that counts as good
    bool upright = true;
    int armStructureCode = 0;
    int systemType = 0;
};

} // namespace WorkSpace
