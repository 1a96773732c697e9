#include "Failure.h"

#include <BRep_Builder.hxx>
#include <Quantity_Color.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <cmath>
#include <host/tools/DataHandle.h>
#include <host/tools/ShapeHandle.h>
#include <mechanism/GrpConfig.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/RobotWorkspace.h>

using namespace mechanism_detail;

namespace {

constexpr double DisplayTransparency = 0.6;
constexpr auto DisplayColour = static_cast<Quantity_NameOfColor>(234);
constexpr double UpdateRatio = 0.65;

/// Fixed: hosts identify a failed build by this line of the log record.
constexpr int BuildFailureLine = 249;

constexpr double AboveAnyFace = 100000.0;
constexpr double SameHeight = 0.001;

void LogBuildFailure(const std::string& text) {
    Log(spdlog::level::err, family::RobotWorkspace, BuildFailureLine, "RobotWorkspace::UpdateWorkspaceShape",
        text);
}

} // namespace

RobotWorkspace::RobotWorkspace() : displayShape(new BaseViewShape(TopoDS_Shape())) {
    displayShape->SetTransparency(DisplayTransparency);
    displayShape->SetColor(Quantity_Color(DisplayColour));
    displayShape->SetSelectionMode(-1, false);
    displayShape->SetDispalyMode(1);
}

void RobotWorkspace::SetRobot(RobotEntity* newRobot) { robot = newRobot; }

void RobotWorkspace::UpdateWorkspaceShape(double /*ratio*/) {
    try {
        Build();
    } catch (const Standard_Failure& failure) {
        LogBuildFailure(DataHandle::StringToUTF8string(failure.GetMessageString()));
    } catch (const std::exception& error) {
        LogBuildFailure(DataHandle::StringToUTF8string(error.what()));
    } catch (...) {
        LogBuildFailure("机器人最佳工作区间生成异常");
    }
}

void RobotWorkspace::Build() {
    WorkSpace::Robot record;
    CalWorkDate(record);
    if (robot != nullptr) {
        record.systemType = GrpConfig::GetSystemType(robot->GetHashIndex());
    }
    if (displayShape->Shape().IsNull()) {
        robotData = WorkSpace::Robot();
    }
    TopoDS_Shape built;
    if (record.systemType == PedestalTypeNone) {
        built = BuildRevolved(record);
    } else if (record.systemType == PedestalTypeAdditional) {
        managerNum = record.upright ? 2 : 1;
        railState = railState || !record.upright;
        built = BuildBox(record, true);
    } else {
        railState = true;
        narrowX = true;
        built = BuildBox(record, false);
    }
    if (built.IsNull()) {
        return;
    }
    // The revolved profile is in the frame of the robot's root, boxes are in the world.
    const bool isRevolved = robot != nullptr && record.systemType == PedestalTypeNone;
    displayShape->SetLocalTransformation(isRevolved ? robot->GetRootMdlTrsf() : gp_Trsf());
    displayShape->SetShape(built);
    robotData = std::move(record);
    workspaceShape = built;
}

void RobotWorkspace::ShowWorkspaceShape(bool show, double ratio) {
    if (show) {
        UpdateWorkspaceShape(ratio);
    }
    ShowWorkspace(show);
}

void RobotWorkspace::ShowWorkspace(bool show) {
    if (!show) {
        displayShape->RemoveFromView();
    } else if (displayShape->IsDisplayed()) {
        displayShape->RedisplayShape(false, false);
    } else {
        displayShape->Display(1, -1);
    }
}

std::pair<TopoDS_Shape, TopoDS_Shape> RobotWorkspace::GetBottomFace(bool upToDate) {
    if (!upToDate) {
        UpdateWorkspaceShape(UpdateRatio);
    }
    std::pair<TopoDS_Shape, TopoDS_Shape> bottom;
    if (trimmedBox.IsNull()) {
        return bottom;
    }
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(trimmedBox, TopAbs_FACE, faces);
    double lowest = AboveAnyFace;
    for (int i = 1; i <= faces.Extent(); ++i) {
        const TopoDS_Shape& face = faces(i);
        const double height = ShapeHandle::GetFaceCenter(TopoDS::Face(face)).Z();
        if (height < lowest) {
            bottom.first = face;
            lowest = height;
        } else if (std::abs(height - lowest) < SameHeight) {
            bottom.second = face;
        }
    }
    return bottom;
}
