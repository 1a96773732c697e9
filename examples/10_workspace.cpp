// The reachable workspace of an arm as a solid, and the numbers of its largest reach.
#include "common/Registrar.h"
#include "common/SampleArm.h"
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp_Explorer.hxx>
#include <cstdio>
#include <mechanism/RobotWorkspace.h>

int main() {
    Registrar::Register(1); // an arm without additional axes: its region is a revolved section
    const std::unique_ptr<RobotEntity> arm = MakeSampleArm(1);
    arm->ShowBestWorkspace(true); // built once, kept until something changes that shapes it

    const TopoDS_Shape& region = arm->GetWorkspace()->GetDisplayShape()->Shape();
    int solids = 0;
    for (TopExp_Explorer it(region, TopAbs_SOLID); it.More(); it.Next()) {
        ++solids;
    }
    GProp_GProps volume;
    BRepGProp::VolumeProperties(region, volume);
    std::printf("%d solids, valid: %d, %.1f cubic metres\n", solids, BRepCheck_Analyzer(region).IsValid(),
                volume.Mass() / 1e9);

    const auto [offset, lateral, height, reach] = RobotWorkspace::GetRobotMaxWorkSpace(arm.get());
    std::printf("shoulder %.0f mm out and %.0f mm up, reach %.0f mm\n", offset, height, reach);
    arm->SetMaxWorkSpaceModel({offset, lateral, height, reach}); // a spheroid for the view
    std::printf("spheroid: %d\n", !arm->GetUnsafeWorkspaceModel().IsNull());
}
