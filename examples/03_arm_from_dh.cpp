// An arm from its Denavit-Hartenberg table: one link a row, in common/SampleArm.h. The arm reads the table
// back off its links, and puts every link's Z on its joint axis.
#include "common/SampleArm.h"
#include <cstdio>

int main() {
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    std::printf("%s: %d links, %d values\n", arm->GetName().c_str(), arm->GetLinkSize(), arm->GetDOF(0));

    std::printf("      a    alpha        d    theta\n");
    for (const auto& [a, alpha, d, theta] : arm->GetArmDH()) {
        std::printf("%7.1f  %7.1f  %7.1f  %7.1f\n", a, alpha / Deg, d, theta / Deg);
    }

    for (const auto& [low, high] : arm->GetLimit(0, /*margin*/ 5 * Deg)) {
        std::printf("limit %.0f to %.0f deg\n", low / Deg, high / Deg);
    }
    try {
        arm->GetAxis(7);
    } catch (const std::string& error) {
        std::printf("axis 7: %s\n", error.c_str());
    }
}
