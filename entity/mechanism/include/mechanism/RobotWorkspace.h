#pragma once

#include <TopoDS_Shape.hxx>
#include <host/view/BaseViewShape.h>
#include <host/workpiece/EntityPointer.h>
#include <host/workspace/WorkSpace.h>
#include <mechanism/Export.h>
#include <utility>

class RobotEntity;
class gp_Ax1;

/// Builds and shows the workspace of one robot as a translucent solid, the envelope.
///
/// A robot on the floor gets the profile of its workspace, revolved about its base by the range of joint 1.
/// One with additional axes, or with fewer values than joints, gets a box, trimmed against what carries it.
/// The solid is rebuilt only when its input changes. Copies share the view object. Lengths in mm, angles in
/// rad; used from the view's thread alone.
///
/// The current tool is given relative to the flange, and the envelope is computed with it in the frame of the
/// table's last row. So the flange must be at that frame's origin, its Z the last joint's positive axis;
/// where the last joint cannot turn all the way round, its X must be the frame's too. Any other flange gives
/// the envelope of another tool.
class MECHANISM_EXPORT RobotWorkspace {
public:
    RobotWorkspace();

    /// The robot whose workspace this is; not owned.
    void SetRobot(RobotEntity* newRobot);
    /// The robot whose workspace this is; null before SetRobot, and after the robot was destroyed.
    const RobotEntity* GetRobot() const { return robot; }
    /// 2 mirrors the box to the robot's other side; an update for additional axes sets it itself.
    void SetManagerNum(int count) { managerNum = count; }
    /// Whether a box was built for a hanging robot or for one with fewer values than joints.
    bool GetRailState() const { return railState; }
    /// The input record from which the shown shape was built.
    const WorkSpace::Robot& GetRobotData() const { return robotData; }
    /// The object that shows the envelope; its shape is a compound of what was built.
    const opencascade::handle<BaseViewShape>& GetDisplayShape() const { return displayShape; }

    /// Rebuilds the envelope where the robot changed. A failure is logged at err (function
    /// "RobotWorkspace::UpdateWorkspaceShape"), and the shape that was shown stays.
    /// @param ratio not used: the record's own ratio is.
    void UpdateWorkspaceShape(double ratio);
    /// Updates and shows the envelope, or removes it from the view.
    void ShowWorkspaceShape(bool show, double ratio);
    /// The lowest face of the trimmed box, by the height of its centre, and a later face of the box whose
    /// centre is within 0.001 mm of that height. Null shapes where there is none.
    /// @param upToDate false updates the envelope first.
    std::pair<TopoDS_Shape, TopoDS_Shape> GetBottomFace(bool upToDate);

    /// Shoulder offset, lateral offset, shoulder height and reach (mm) of a robot as it is now; zeros for
    /// null.
    /// @throws std::out_of_range "invalid vector subscript" for a robot without limits;
    ///         std::invalid_argument for an arm that WorkSpace::GetRobotMaxWorkSpace refuses.
    static std::array<double, 4> GetRobotMaxWorkSpace(RobotEntity* robot);

private:
    MECHANISM_NO_EXPORT void CalWorkDate(WorkSpace::Robot& record) const;
    MECHANISM_NO_EXPORT void Build();
    MECHANISM_NO_EXPORT TopoDS_Shape BuildRevolved(const WorkSpace::Robot& record);
    MECHANISM_NO_EXPORT TopoDS_Shape BuildBox(const WorkSpace::Robot& record, bool mirrorable);
    MECHANISM_NO_EXPORT static TopoDS_Shape CreateRevol(const TopoDS_Shape& profile, const gp_Ax1& axis,
                                                        double angle);
    MECHANISM_NO_EXPORT void CutShape(TopoDS_Shape& shape) const;
    MECHANISM_NO_EXPORT void ShowWorkspace(bool show);

    WorkSpace::Robot robotData;
    EntityPointer<RobotEntity> robot;
    TopoDS_Shape workspaceShape;
    opencascade::handle<BaseViewShape> displayShape;
    TopoDS_Shape trimmedBox;
    int managerNum = 1;
    bool railState = false;
    bool narrowX = false;
};
