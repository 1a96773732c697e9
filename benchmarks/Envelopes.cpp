#include "Harness.h"

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakeRevol.hxx>
#include <BRep_Builder.hxx>
#include <TopoDS_Compound.hxx>
#include <array>
#include <host/tools/ShapeHandle.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <memory>
#include <support/Registrar.h>
#include <support/SampleMechanisms.h>

namespace {

using bench::Row;
using bench::Work;

constexpr std::uint64_t Hash = 71;
constexpr double VolumeShare = 1e-6;

/// A robot with two tools in turn, so that every update finds another record.
struct Arm {
    Registrar registrar{Hash, {}};
    std::unique_ptr<RobotEntity> robot;
    std::array<gp_Trsf, 2> tools;
    std::array<WorkSpace::Robot, 2> records;
    std::array<std::vector<std::vector<double>>, 2> profiles;
    std::size_t turn = 0;
    double volume = 0; ///< of what the bare kernel built last

    Arm() {
        GrpConfig::GetCoupledValue(Hash).index[0] = 0;
        robot = std::make_unique<RobotEntity>(sample::Build(sample::SixAxisArm(), Hash).get());
        for (const std::size_t i : {0U, 1U}) {
            tools[i].SetTranslation(gp_Vec(0, 0, 100 + static_cast<double>(i)));
            robot->SetTools({tools[i]});
            robot->GetWorkspace()->UpdateWorkspaceShape(0);
            records[i] = robot->GetWorkspace()->GetRobotData();
            profiles[i] = WorkSpace::GetRobotWorkSpace(records[i]);
        }
    }

    std::size_t Next() { return turn = 1 - turn; }
    void Build() {
        robot->SetTools({tools[Next()]});
        robot->GetWorkspace()->UpdateWorkspaceShape(0);
    }
    double Volume() const {
        return ShapeHandle::GetAreaOrVol(robot->GetWorkspace()->GetDisplayShape()->Shape());
    }
};

TopoDS_Shape Bare(const std::vector<std::vector<double>>& profile, const WorkSpace::Robot& record) {
    BRepBuilderAPI_MakePolygon wire;
    for (std::size_t i = 0; i + 1 < profile.size(); ++i) {
        wire.Add(gp_Pnt(profile[i][0], 0, profile[i][1]));
    }
    wire.Close();
    const TopoDS_Shape face = BRepBuilderAPI_MakeFace(wire.Wire(), Standard_True).Face();
    TopoDS_Compound both;
    BRep_Builder builder;
    builder.MakeCompound(both);
    for (const double angle : {record.jointMax[0], record.jointMin[0]}) {
        builder.Add(both, BRepPrimAPI_MakeRevol(face, gp_Ax1(gp::Origin(), gp::DZ()), angle).Shape());
    }
    return both;
}

Work Envelope(bool /*quick*/) {
    auto arm = std::make_shared<Arm>();
    auto shape = std::make_shared<TopoDS_Shape>();
    return {{[arm] { arm->Build(); }, 1,
             [arm] { bench::Keep(WorkSpace::GetRobotWorkSpace(arm->records[arm->Next()])[0][0]); }},
            {[arm, shape] {
                const std::size_t i = arm->Next();
                *shape = Bare(arm->profiles[i], arm->records[i]);
            }},
            [arm, shape] {
                // Both sides once more, of one tool.
                *shape = Bare(arm->profiles[1], arm->records[1]);
                arm->turn = 0;
                arm->Build();
                return bench::Difference({arm->Volume() / ShapeHandle::GetAreaOrVol(*shape)}, {1},
                                         VolumeShare);
            }};
}

Work Cached(bool /*quick*/) {
    auto arm = std::make_shared<Arm>();
    auto same = std::make_shared<Arm>();
    return {{[same] { same->robot->GetWorkspace()->UpdateWorkspaceShape(0); }},
            {[arm] { arm->Build(); }},
            [arm, same] {
                arm->turn = 0;
                arm->Build();
                return bench::Difference({same->Volume() / arm->Volume()}, {1}, VolumeShare);
            }};
}

} // namespace

std::vector<Row> bench::EnvelopeRows() {
    return {{"envelope", "the bare kernel's revolve of the same profile, twice", 1.15, Envelope},
            {"envelope_cached", "building it", 0.01, Cached}};
}
