#pragma once

#include <host/view/BaseViewShape.h>
#include <host/workspace/WorkSpace.h>
#include <mechanism/Export.h>

class RobotEntity;

/// Shows the reachable region of one robot as a translucent solid.
class MECHANISM_EXPORT RobotWorkspace {
public:
    RobotWorkspace();

    /// The robot whose region this is; not owned.
    void SetRobot(RobotEntity* newRobot) { robot = newRobot; }
    const RobotEntity* GetRobot() const { return robot; }
    void SetManagerNum(int count) { managerNum = count; }
    bool GetRailState() const { return railState; }
    /// The record that the shown shape was built from.
    const WorkSpace::Robot& GetRobotData() const { return robotData; }

    /// Rebuilds the region where the robot changed.
    void UpdateWorkspaceShape(double ratio);
    /// Updates and shows the region, or takes it out of the view.
    void ShowWorkspaceShape(bool show, double ratio);

private:
    void ShowWorkspace(bool show);

    WorkSpace::Robot robotData;
    RobotEntity* robot = nullptr;
    opencascade::handle<BaseViewShape> displayShape;
    int managerNum = 1;
    bool railState = false;
};
