#include "Outline.h"

#include <algorithm>
#include <cmath>

namespace WorkSpace {

namespace {

/// Largest step (rad) between samples of a joint, however short its lever, while other joints depend on it.
constexpr double LongestStep = 0.35;

// The chord of an angle h deviates from its circle by lever * h^2 / 8.
int CountFor(const Range& range, double lever, double tolerance, double longestStep) {
    if (lever <= tolerance) {
        return 1;
    }
    const double step = std::min(longestStep, std::sqrt(8 * tolerance / lever));
    return static_cast<int>(std::ceil(range.Width() / step)) + 1;
}

} // namespace

WristNet::WristNet(const Arm& arm, double tolerance) : axisPlane(arm.AxisPlane()) {
    std::array<std::vector<double>, 3> values;
    for (std::size_t joint = 0; joint < values.size(); ++joint) {
        const Range& range = arm.wrist[joint];
        const double longestStep = joint < 2 ? LongestStep : 2 * LongestStep;
        values[joint] = range.Spread(CountFor(range, arm.leverage[joint], tolerance, longestStep));
        counts[joint] = values[joint].size();
    }
    for (const double fourth : values[0]) {
        for (const double fifth : values[1]) {
            for (const double last : values[2]) {
                places.push_back(arm.ToolInElbow({fourth, fifth, last}));
            }
        }
    }
}

std::vector<Vec> WristNet::Some(std::size_t most) const {
    // An odd stride avoids a common divisor with the number of values of a joint.
    const std::size_t stride = places.size() / most + 1;
    std::vector<Vec> some;
    for (std::size_t i = 0; i < places.size(); i += stride | 1U) {
        some.push_back(places[i]);
    }
    return some;
}

} // namespace WorkSpace
