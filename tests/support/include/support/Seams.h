#pragma once

#include <cmath>
#include <mechanism/RobotEntity.h>
#include <planning/SeamPlanner.h>
#include <support/SampleMechanisms.h>

namespace sample {

/// Where a pipe along Z of radius 60 meets one along X of radius 100: the torch halfway between both.
inline std::vector<planning::SeamPose> Saddle(int count) {
    constexpr double branch = 60;
    constexpr double main = 100;
    std::vector<planning::SeamPose> poses;
    for (int i = 0; i < count; ++i) {
        const double a = 2 * std::numbers::pi * i / (count - 1);
        const double y = branch * std::sin(a);
        const double z = std::sqrt(main * main - y * y);
        const gp_Dir out(std::cos(a), std::sin(a) + y / main, z / main);
        poses.push_back(
            {{branch * std::cos(a), y, z}, {-out.X(), -out.Y(), -out.Z()}, {out.X(), out.Y(), out.Z()}});
    }
    poses.back() = poses.front();
    return poses;
}

/// A straight seam, the torch across it and up by `lean`.
inline std::vector<planning::SeamPose> Straight(const gp_Pnt& from, const gp_Pnt& to, int count,
                                                double lean) {
    const gp_Dir across = gp_Vec(from, to).Crossed(gp_Vec(0, 0, 1));
    const gp_Vec tool = gp_Vec(across) * std::sin(lean) - gp_Vec(0, 0, 1) * std::cos(lean);
    std::vector<planning::SeamPose> poses;
    for (int i = 0; i < count; ++i) {
        const gp_XYZ p = from.XYZ() + (to.XYZ() - from.XYZ()) * (static_cast<double>(i) / (count - 1));
        poses.push_back({{p.X(), p.Y(), p.Z()}, {tool.X(), tool.Y(), tool.Z()}});
    }
    return poses;
}

/// An arm with a bent torch, on the ground or on a rail, in front of a positioner of two axes.
struct WeldingCell {
    explicit WeldingCell(bool onRail = false) {
        constexpr double Round = 2 * std::numbers::pi;
        robot.SetTools({torch});
        table->SetRootMdlTrsf(tablePlace);
        const_cast<LinkRod*>(table->GetLink(1))->limit = {-Round, Round};
        if (onRail) {
            rail->SetRootMdlTrsf(railPlace);
            rail->AssembleOtherModel(&robot, Place(101, 0));
        }
        arm = std::make_unique<planning::CarriedArm>(robot, table.get(), 0);
    }
    static gp_Trsf At(double x, double y, double z) {
        gp_Trsf trsf;
        trsf.SetTranslation(gp_Vec(x, y, z));
        return trsf;
    }

    const Mechanism armModel = SixAxisArm();
    const Mechanism railModel = TwoAxisRail();
    const Mechanism tableModel = Positioner();
    const gp_Trsf torch = Frame({60, 0, 350}, gp_Dir(0.5, 0, 1), gp_Dir(1, 0, -0.5));
    const gp_Trsf railPlace = At(-100, -1500, -340);
    const gp_Trsf tablePlace = At(750, 0, -800);
    const std::unique_ptr<GenericEntityConfig> rail = Build(railModel, 50, "rail");
    const std::unique_ptr<GenericEntityConfig> table = Build(tableModel, 60, "table");
    const std::unique_ptr<GenericEntityConfig> structure = Build(armModel, 70);
    RobotEntity robot{structure.get()};
    std::unique_ptr<planning::CarriedArm> arm;
};

inline planning::AxisFreedom Axis(planning::AxisFreedom::Kind kind, double from = 0, double to = 0) {
    planning::AxisFreedom axis;
    axis.kind = kind;
    axis.from = from;
    axis.to = to;
    return axis;
}

} // namespace sample
