// Where the joints must be for the tool centre to be somewhere: every shape of the arm, and what is in the
// way.
#include "common/SampleArm.h"
#include <cstdio>
#include <numbers>
#include <planning/CarriedArm.h>
#include <vector>

namespace {

constexpr double Degrees = 180.0 / std::numbers::pi;

void Print(const planning::Solutions& solutions, std::size_t joints) {
    for (const planning::Solution& solution : solutions) {
        std::printf("%-5s %-4s %-7s", planning::Name(solution.configuration.shoulder),
                    planning::Name(solution.configuration.elbow),
                    planning::Name(solution.configuration.wrist));
        for (std::size_t i = 0; i < joints; ++i) {
            std::printf(" %7.2f", solution.values[i] * Degrees);
        }
        std::printf("\n");
    }
}

} // namespace

int main() {
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    const planning::CarriedArm carried(*arm); // what it needs of the arm, once; then it may be shared
    const std::vector<double> values = {0.3, 0.2, -0.3, 0.5, 0.9, -0.4};
    const Rigid pose = carried.ToolCentreInWorld({values});

    const planning::Solutions solutions = carried.SolveInWorld(pose);
    std::printf("%zu shapes with the tool centre at %.1f %.1f %.1f mm\n", solutions.size(), pose.p[0],
                pose.p[1], pose.p[2]);
    Print(solutions, values.size());

    Rigid distant = pose;
    distant.p[0] += 3000;
    const planning::Solutions none = carried.SolveInWorld(distant);
    std::printf("3 m further out: out of reach by %.1f mm\n", none.excess);

    const planning::Jacobian jacobian = carried.JacobianAt({values});
    std::printf("manipulability %.4f\n", jacobian.Manipulability(carried.Arm().Reach()));
}
