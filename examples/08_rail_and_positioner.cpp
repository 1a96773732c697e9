// A rail carries the arm, a positioner the workpiece. One state moves all of them: each entity takes its
// slice.
#include "common/Registrar.h"
#include "common/SampleArm.h"
#include <cstdio>
#include <host/tools/gpHandle.h>
#include <host/workpiece/Workpiece.h>
#include <mechanism/mechanism.h>

namespace {

/// A link that slides or turns about an axis given in the carrier's own frame.
Json::Value LinkOnAxis(JointType type, const gp_Pnt& origin, const gp_Dir& axis, double low, double high) {
    Json::Value link;
    link["name"] = "Link1";
    link["link_hash"] = 1;
    link["parent_link_hash"] = 0;
    link["joint_type"] = static_cast<int>(type);
    link["joint_value"] = 0.0;
    link["center_trsf"] = DataHandle::TrsfToJsonSix(gp_Trsf());
    for (const double number : {origin.X(), origin.Y(), origin.Z(), axis.X(), axis.Y(), axis.Z()}) {
        link["joint_axis"].append(number);
    }
    link["axis_min"] = low; // mm for a slide, degrees for a turn
    link["axis_max"] = high;
    return link;
}

template <typename Carrier>
std::unique_ptr<Carrier> Make(const char* name, std::uint64_t hash, const Json::Value& link) {
    GenericEntityConfig structure;
    structure.SetName(name);
    structure.SetHashIndex(hash);
    structure.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));
    structure.UpdateLinkRodPara(link, false);
    structure.AddFlange(std::make_shared<Flange>(structure.GetEndLink(0), gp_Trsf()));
    return std::make_unique<Carrier>(&structure);
}

} // namespace

int main() {
    const auto arm = MakeSampleArm(1);
    const auto rail = Make<PedestalEntity>("rail", 2, LinkOnAxis(JointLinear, {}, gp_Dir(0, 1, 0), 0, 5000));
    const auto table = Make<BenchEntity>("table", 3, LinkOnAxis(JointRotary, {}, gp_Dir(0, 0, 1), -180, 180));
    table->SetRootMdlTrsf(gpHandle::EulerToTrsf(LocEuler(gp_Pnt(1500, 2000, 0), gp_Pnt())));
    Workpiece part;
    part.SetRootMdl(new ShapeEntity(TopoDS_Shape(), Uuid::CreateUuid()));

    Json::Value onLink1;
    onLink1["link_hash"] = 1;
    onLink1["install_index"] = 0;
    rail->AssembleOtherModel(arm.get(), onLink1);
    rail->AddSystem(arm->GetRobotSystem());
    rail->Initial(); // finds which of its axes belong to the arm's system
    table->AddWorkpiece(&part);
    arm->AddWorkbench(table.get());
    Registrar::Register(arm->GetRobotSystem(), rail->GetDOF(arm->GetRobotSystem()), {1});

    GrpState state(arm->GetRobotSystem());
    state.SetValue(Robot, ARM_J1, 90 * Deg);
    state.SetValue(Pedestal, 0, 2000);
    state.SetValues(Bench, std::vector<double>{45 * Deg});

    arm->SetCurrentValue(state.GetValues(Robot), 0);
    arm->ForwardTrsf(0, false, false);
    rail->SetCurrentValue(state.GetValues(Pedestal), state.GetSystem());
    rail->ForwardTrsf(state.GetSystem(), true, /*what it carries*/ true);
    table->SetCurrentValue(state.GetValues(Bench), 0);
    table->ForwardTrsf(0, true, true);

    const gp_XYZ tip = arm->GetCurrentTrsfTCP().TranslationPart();
    std::printf("arm's tip at (%.1f, %.1f, %.1f)\n", tip.X(), tip.Y(), tip.Z());
    const LocEuler held = gpHandle::TrsfToEuler(part.GetRootMdlTrsf());
    std::printf("workpiece at (%.1f, %.1f, %.1f), turned %.1f deg\n", held.location.X(), held.location.Y(),
                held.location.Z(), held.euler.Z() / Deg);
}
