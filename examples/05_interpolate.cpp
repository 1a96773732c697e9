// Dense motion between two key states: by the largest step of each axis, or by the gap of the tool centre.
#include "common/Registrar.h"
#include "common/SampleArm.h"
#include <cstdio>
#include <mechanism/GrpStateUtils.h>
#include <mechanism/InterpHandle.h>

int main() {
    constexpr std::uint64_t cell = 1;
    Registrar::Register(cell);
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(cell);

    // The pose of a state is the tool centre that its values give.
    const auto taught = [&](const std::vector<double>& values) {
        GrpState state(cell);
        state.SetValues(values);
        arm->SetCurrentValue(values, 0);
        arm->ForwardTrsf(0, false, false);
        state.SetLocEuler(0, arm->GetCurrentTCP());
        return state;
    };
    const GrpState home = taught({0, 0, 0, 0, 0, 0});
    const GrpState goal = taught({40 * Deg, 20 * Deg, 0, 0, 30 * Deg, 0});

    // At most one degree a step on every axis that moves.
    const std::vector<GrpState> fine =
        InterpHandle::InterpolationPts(home, goal, std::vector<double>(6, Deg));
    std::printf("by axis: %zu states, joint 1 of the second: %.2f deg\n", fine.size(),
                fine[1].GetValue(Robot, ARM_J1) / Deg);

    // One state every 50 mm of the straight way between the tool centres.
    const std::vector<GrpState> even = InterpHandle::InterpolationPtsByPosGap(home, goal, 50);
    std::printf("by gap: %zu states, %.1f mm apart\n", even.size(),
                even[0].GetLocEuler(0).location.Distance(even[1].GetLocEuler(0).location));

    // Out and straight back again is cut out, and so is standing still.
    const std::vector<GrpState> thinned =
        GrpStateUtils::RemoveDuplicatedStates({home, home, goal, home, goal}, 1e-6);
    std::printf("thinned: %zu states\n", thinned.size());
}
