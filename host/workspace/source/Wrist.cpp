#include "Outline.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <unordered_set>

namespace WorkSpace {

namespace {

/// However short its lever, a joint that others hang on is looked at in steps of no more than this (rad).
constexpr double LongestStep = 0.25;

// A circle's chord of angle h leaves it by lever * h^2 / 8.
int CountFor(const Range& range, double lever, double tolerance, double longestStep) {
    if (lever <= tolerance) {
        return 1;
    }
    const double step = std::min(longestStep, std::sqrt(8 * tolerance / lever));
    return static_cast<int>(std::ceil(range.Width() / step)) + 1;
}

} // namespace

WristNet::WristNet(const Arm& arm, double tolerance) {
    std::array<std::vector<double>, 3> values;
    for (std::size_t joint = 0; joint < values.size(); ++joint) {
        const Range& range = arm.wrist[joint];
        const double longestStep = joint < 2 ? LongestStep : 2 * LongestStep;
        values[joint] = range.Spread(CountFor(range, arm.leverage[joint], tolerance, longestStep));
        counts[joint] = values[joint].size();
        bounded[joint] = range.Width() < 2 * std::numbers::pi;
    }
    for (const double fourth : values[0]) {
        for (const double fifth : values[1]) {
            for (const double last : values[2]) {
                places.push_back(arm.ToolInElbow({fourth, fifth, last}));
            }
        }
    }
}

std::vector<Point3> WristNet::Some(std::size_t most) const {
    // Odd strides do not fall in step with the counts of the joints.
    const std::size_t stride = places.size() / most + 1;
    std::vector<Point3> some;
    for (std::size_t i = 0; i < places.size(); i += stride | 1U) {
        some.push_back(places[i]);
    }
    return some;
}

std::vector<Point3> WristNet::Thinned(double apart) const {
    const double side = apart / std::numbers::sqrt3;
    std::unordered_set<std::uint64_t> taken;
    std::vector<Point3> thinned;
    for (std::size_t i = 0; i < places.size(); ++i) {
        std::uint64_t key = 0;
        std::size_t rest = i;
        for (std::size_t joint = counts.size(); joint-- > 0; rest /= counts[joint]) {
            const std::size_t at = rest % counts[joint];
            const bool atEnd = bounded[joint] && counts[joint] > 1;
            key = 3 * key + (!atEnd ? 0U : at == 0 ? 1U : at + 1 == counts[joint] ? 2U : 0U);
        }
        for (const double coordinate : {places[i].x, places[i].y, places[i].z}) {
            constexpr unsigned Bits = 16;
            const auto cell = static_cast<std::int64_t>(std::floor(coordinate / side));
            key = (key << Bits) | (static_cast<std::uint64_t>(cell) & ((1U << Bits) - 1));
        }
        if (taken.insert(key).second) {
            thinned.push_back(places[i]);
        }
    }
    return thinned;
}

// The other lines bound regions of one wrist each. Where joints 2 and 3 can give no more, the boundary is the
// wrist's own, and lies between those regions.
void ArmSweep::MarkWristLines(const WristNet& net, const Raster* known, Raster& raster) {
    inside = known;
    const auto& [fourths, fifths, lasts] = net.counts;
    const std::array<std::size_t, 3> strides = {fifths * lasts, lasts, 1};
    std::vector<SectionPoint> points(net.places.size());
    for (const double upper : {upperRange.low, upperRange.high}) {
        for (const double fore : {foreRange.low, foreRange.high}) {
            const Place upperTurn = Turned(upper);
            const Place foreTurn = Turned(fore);
            for (std::size_t i = 0; i < points.size(); ++i) {
                TakeWrist(net.places[i]);
                points[i] = Section(shoulder + upperTurn * (upperArm + foreTurn * wrist));
            }
            for (std::size_t i = 0; i < points.size(); ++i) {
                for (std::size_t joint = 0; joint < strides.size(); ++joint) {
                    if (i / strides[joint] % net.counts[joint] + 1 < net.counts[joint]) {
                        MarkPiece(points[i], points[i + strides[joint]], raster);
                    }
                }
            }
        }
    }
}

} // namespace WorkSpace
