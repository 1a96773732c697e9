#include "Failure.h"

#include <Quantity_Color.hxx>
#include <mechanism/RobotWorkspace.h>

using namespace mechanism_detail;

namespace {
constexpr double DisplayTransparency = 0.6;
constexpr auto DisplayColour = static_cast<Quantity_NameOfColor>(234);
} // namespace

RobotWorkspace::RobotWorkspace() : displayShape(new BaseViewShape(TopoDS_Shape())) {
    displayShape->SetTransparency(DisplayTransparency);
    displayShape->SetColor(Quantity_Color(DisplayColour));
    displayShape->SetSelectionMode(-1, false);
    displayShape->SetDispalyMode(1);
}

void RobotWorkspace::UpdateWorkspaceShape(double /*ratio*/) {
    Fail(family::RobotWorkspace, __LINE__, "RobotWorkspace::UpdateWorkspaceShape",
         "this build has no reachability computation");
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
