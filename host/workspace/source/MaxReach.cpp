#include "Arm.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace WorkSpace {

namespace {

// Joint 2 turns about the shoulder and does not change the distance from it: the other four are searched.
using Values = std::array<double, 4>;

constexpr int Lattice = 9;
constexpr double FirstStep = 2 * std::numbers::pi / Lattice;
constexpr double LastStep = 1e-4;

struct Stretch {
    const Arm& arm;
    Vec shoulder = arm.Shoulder();
    std::array<Range, 4> ranges = {arm.forearm, arm.wrist[0], arm.wrist[1], arm.wrist[2]};
    Values best{};
    double length = -1;

    bool Try(const Values& q) {
        const Vec centre = Apply(arm.Elbow(0, q[0]), arm.ToolInElbow({q[1], q[2], q[3]}));
        const double found = std::hypot(centre.x - shoulder.x, centre.y - shoulder.y, centre.z - shoulder.z);
        if (found > length) {
            length = found;
            best = q;
            return true;
        }
        return false;
    }

    // Coarse search of all combinations for the start of the climb.
    void Scan() {
        const std::vector<double> last = ranges[3].Spread(arm.leverage[2] > 0 ? Lattice : 1);
        for (const double fore : ranges[0].Spread(2 * Lattice)) {
            for (const double fourth : ranges[1].Spread(Lattice)) {
                for (const double fifth : ranges[2].Spread(Lattice)) {
                    std::for_each(last.begin(), last.end(), [&](double sixth) {
                        Try({fore, fourth, fifth, sixth});
                    });
                }
            }
        }
    }

    // One step of every joint in both directions; true when any of them increased the distance.
    bool Climb(double step) {
        bool climbed = false;
        for (std::size_t joint = 0; joint < best.size(); ++joint) {
            for (const double by : {-step, step}) {
                Values q = best;
                q[joint] = std::clamp(q[joint] + by, ranges[joint].low, ranges[joint].high);
                climbed |= Try(q);
            }
        }
        return climbed;
    }
};

} // namespace

double Arm::StretchedLength() const {
    Stretch stretch{*this};
    stretch.Scan();
    for (double step = FirstStep; step > LastStep; step /= 2) {
        while (stretch.Climb(step)) {
        }
    }
    return stretch.length;
}

std::array<double, 4> GetRobotMaxWorkSpace(const Robot& robot) {
    if (robot.dh.empty()) {
        return {};
    }
    const Arm arm(robot);
    const Vec shoulder = arm.Shoulder();
    const double offset = std::abs(shoulder.x);
    return {offset, shoulder.y, shoulder.z, offset + arm.StretchedLength()};
}

} // namespace WorkSpace
