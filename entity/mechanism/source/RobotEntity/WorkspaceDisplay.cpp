#include "Failure.h"
#include "Format.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepLib.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepSweep_Revol.hxx>
#include <Quantity_Color.hxx>
#include <Standard_Failure.hxx>
#include <cmath>
#include <gp.hxx>
#include <gp_Elips.hxx>
#include <host/tools/DataHandle.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>
#include <stdexcept>

using namespace mechanism_detail;

namespace {

constexpr double ShownRatio = 0.65;

constexpr double SmallestReach = 0.001;
/// Reach (mm) from which a double no longer resolves the kernel's tolerance of 1e-7 mm.
constexpr double FarthestReach = 1e8;
constexpr double MeshAngle = 0.3490658503988659;
constexpr double MeshDeflection = 50.0;
constexpr double UnsafeTransparency = 0.7;
constexpr auto UnsafeColour = static_cast<Quantity_NameOfColor>(407);

/// Fixed: hosts identify these log records by their lines.
constexpr int NumbersLine = 693;
constexpr int FailureLine = 728;
constexpr const char* SettingModel = "RobotEntity::SetMaxWorkSpaceModel";

TopoDS_Shape Spheroid(const std::array<double, 4>& a) {
    const gp_Pnt centre(0, a[1], a[2]);
    const gp_Elips section(gp_Ax2(centre, gp::DY(), gp::DX()), a[3], a[3] - a[0]);
    const TopoDS_Shape profile = BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(section)).Wire();
    BRepLib::BuildCurves3d(profile);
    return BRepSweep_Revol(profile, gp_Ax1(centre, gp::DZ()), Standard_False).Shape();
}

void Style(BaseViewShape& model) {
    model.SetTransparency(UnsafeTransparency);
    model.SetColor(Quantity_Color(UnsafeColour));
    model.SetSelectionMode(-1, false);
    model.SetUnSelected(true);
    model.SetDispalyMode(1);
}

// The kernel would build an infinitely long spheroid from infinitely small arcs.
void RequireFinite(const std::array<double, 4>& a) {
    for (const double number : a) {
        if (!(std::abs(number) < FarthestReach)) {
            throw std::invalid_argument(format("{}, expected lengths below {} mm", number, FarthestReach));
        }
    }
}

void LogModelFailure(const std::string& text) {
    Log(spdlog::level::err, family::RobotEntity, FailureLine, SettingModel, text);
}

} // namespace

RobotWorkspace& RobotEntity::RequireWorkspace() const {
    if (workspace == nullptr) {
        throw std::logic_error("workspace: none, expected a robot that was through Initial");
    }
    return *workspace;
}

void RobotEntity::ShowBestWorkspace(bool show) { RequireWorkspace().ShowWorkspaceShape(show, ShownRatio); }

void RobotEntity::UpdateMaxWork() {
    SetMaxWorkSpaceModel(WorkSpace::GetRobotMaxWorkSpace(RequireWorkspace().GetRobotData()));
}

void RobotEntity::SetMaxWorkSpaceModel(const std::array<double, 4>& a) {
    Log(spdlog::level::debug, family::RobotEntity, NumbersLine, SettingModel,
        format("{},{},{},{}", a[0], a[1], a[2], a[3]));
    if (a[3] < SmallestReach) {
        return;
    }
    try {
        RequireFinite(a);
        ReplaceUnsafeModel(Spheroid(a));
    } catch (const Standard_Failure& failure) {
        LogModelFailure(DataHandle::StringToUTF8string(failure.GetMessageString()));
    } catch (const std::exception& error) {
        LogModelFailure(DataHandle::StringToUTF8string(error.what()));
    } catch (...) {
        LogModelFailure("机器人最大工作半径生成异常");
    }
}

void RobotEntity::ReplaceUnsafeModel(const TopoDS_Shape& spheroid) {
    if (!unsafeWorkspaceMdl.IsNull()) {
        if (!rootMdl.IsNull()) {
            rootMdl->RemoveChild(unsafeWorkspaceMdl);
        }
        unsafeWorkspaceMdl->RemoveFromView();
    }
    unsafeWorkspaceMdl = new BaseViewShape(spheroid);
    const BRepMesh_IncrementalMesh mesher(
        spheroid, ViewShape::GetMeshPara(unsafeWorkspaceMdl->Attributes(), MeshAngle, MeshDeflection));
    Style(*unsafeWorkspaceMdl);
    if (!rootMdl.IsNull()) {
        rootMdl->AddChild(unsafeWorkspaceMdl);
    }
}

void RobotEntity::SetUnSaftyWorkSpaceVisible(bool visible) {
    if (unsafeWorkspaceMdl.IsNull()) {
        return;
    }
    unsafeWorkspaceMdl->SetSelectionMode(-1, false);
    unsafeWorkspaceMdl->SetUnSelected(true);
    if (visible) {
        unsafeWorkspaceMdl->RedisplayShape(false, false);
    } else {
        unsafeWorkspaceMdl->Hide();
    }
}
