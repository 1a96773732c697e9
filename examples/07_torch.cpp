// A welding torch from its numbers, mounted on the flange. Mounting enters its tool centre into the arm's
// list.
#include "common/SampleArm.h"
#include <cstdio>
#include <mechanism/ToolEntity.h>

namespace {

Json::Value TorchNumbers() {
    Json::Value torch;
    torch["Type"] = "WeldGun";
    torch["tip_radius"] = 4.0; // all in mm, the angle in degrees
    torch["tip_length"] = 8.0;
    torch["nozzle_radius"] = 12.0;
    torch["nozzle_length"] = 75.0;
    torch["neck_radius"] = 10.0;
    torch["body_radius"] = 28.0;
    torch["body_length"] = 110.0;
    torch["tcp_z"] = 330.0;
    torch["tcp_x"] = 60.0;
    torch["torch_angle"] = 158.0;
    torch["stick_out"] = 15.0;
    return torch;
}

} // namespace

int main() {
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    const auto [built, torch] = ToolEntity::CreateToolEntityByParameter(TorchNumbers());
    torch->SetName("torch");
    torch->SetHashIndex(35);
    torch->UpdateLinkModelNames();
    std::printf("built: %d, parts: %zu\n", built, torch->GetFixMdls().size());

    Json::Value place;
    place["link_hash"] = Json::UInt64(arm->GetFlangeByIndex(0)->linkHash);
    place["install_index"] = 0;
    const gp_XYZ bare = arm->GetCurrentTrsfTCP().TranslationPart();
    arm->AssembleOtherModel(torch.get(), place);
    const gp_XYZ armed = arm->GetCurrentTrsfTCP().TranslationPart();
    std::printf("flange (%.1f, %.1f, %.1f)\n", bare.X(), bare.Y(), bare.Z());
    std::printf("tool centre (%.1f, %.1f, %.1f)\n", armed.X(), armed.Y(), armed.Z());
    std::printf("current tool: %d, record X %.1f Z %.1f mm\n", arm->GetToolIndex(),
                arm->GetToolData()["X"].asDouble(), arm->GetToolData()["Z"].asDouble());

    arm->SetZOffset(10); // along the tool's own Z
    const gp_XYZ off = arm->GetCurrentTrsfTCP().TranslationPart();
    std::printf("moved by the offset: %.1f mm\n", (off - armed).Modulus());

    // Rebuilt in place with a longer neck; numbers that make no torch change nothing.
    Json::Value longer = TorchNumbers();
    longer["tcp_z"] = 400.0;
    std::printf("rebuilt: %d\n", torch->UpdataToolParameterData(longer));
    longer["nozzle_radius"] = -1.0;
    try {
        torch->UpdataToolParameterData(longer);
    } catch (const std::invalid_argument& error) {
        std::printf("refused: %s\n", error.what());
    }
}
