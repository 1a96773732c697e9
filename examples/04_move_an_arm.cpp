// Moving an arm and asking where its tool centre is: values in, forward kinematics, pose out.
#include "common/SampleArm.h"
#include <cstdio>

namespace {

void Print(const char* what, const LocEuler& pose) {
    std::printf("%-9s at (%.1f, %.1f, %.1f) mm, turned (%.1f, %.1f, %.1f) deg\n", what, pose.location.X(),
                pose.location.Y(), pose.location.Z(), pose.euler.X() / Deg, pose.euler.Y() / Deg,
                pose.euler.Z() / Deg);
}

} // namespace

int main() {
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    // A tool is a frame relative to the flange; the list of an arm has places 0 to 10.
    Json::Value tool;
    tool["Type"] = 0; // Euler angles, in degrees
    tool["ToolIndex"] = 0;
    tool["X"] = 0.0;
    tool["Y"] = 0.0;
    tool["Z"] = 250.0;
    tool["RX"] = tool["RY"] = tool["RZ"] = 0.0;
    arm->SetToolData(tool);
    arm->ChangeCurrentTool(0);

    // Nothing moves on SetCurrentValue; ForwardTrsf moves links, and view models and mounted entities if
    // asked.
    for (const std::vector<double>& values : {std::vector<double>{0, 0, 0, 0, 0, 0},
                                              {90 * Deg, 0, 0, 0, 0, 0},
                                              {30 * Deg, 20 * Deg, -10 * Deg, 0, 60 * Deg, 0}}) {
        arm->SetCurrentValue(values, 0);
        arm->ForwardTrsf(0, /*models*/ false, /*mounted*/ false);
        Print("tool", arm->GetCurrentTCP());
    }
    const gp_XYZ elbow = arm->GetCurJointTrsf(2).TranslationPart(); // positions count from 0
    std::printf("elbow at (%.1f, %.1f, %.1f)\n", elbow.X(), elbow.Y(), elbow.Z());
    const std::vector<double> stretched = {0, 0, 175 * Deg, 0, 0, 0};
    std::printf("within limits: %d\n", arm->IsInLimit(stretched, 0, 0));
}
