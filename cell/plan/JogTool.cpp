#include <cell/model/SystemValues.h>
#include <cell/plan/Jog.h>
#include <cell/text/Text.h>
#include <host/tools/gpHandle.h>
#include <planning/PoseFollower.h>

// Moving a tool centre by hand.

namespace cell {

namespace {

constexpr std::size_t Directions = 6;
constexpr const char* Names[Directions] = {"along X", "along Y", "along Z", "about X", "about Y", "about Z"};

/// A step along an axis, or about it through the origin.
gp_Trsf StepOf(std::size_t direction, double step) {
    const gp_Dir axes[3] = {gp::DX(), gp::DY(), gp::DZ()};
    gp_Trsf motion;
    if (direction < 3) {
        motion.SetTranslation(gp_Vec(axes[direction]) * (step * JogSlide));
    } else {
        motion.SetRotation(gp_Ax1(gp::Origin(), axes[direction - 3]), step * JogTurn);
    }
    return motion;
}

/// The tool centre after a step by its own axes, or by axes through it that are parallel to the world's.
gp_Trsf Moved(const gp_Trsf& tool, const gp_Trsf& step, bool inTool) {
    if (inTool) {
        return tool * step;
    }
    gp_Trsf there;
    there.SetTranslation(gp_Vec(tool.TranslationPart()));
    return there * step * there.Inverted() * tool;
}

} // namespace

void Jog::AddTool(std::size_t system) {
    const System& moved = cell.Systems()[system];
    try {
        arms.push_back(std::make_unique<planning::CarriedArm>(*moved.robot));
    } catch (const std::invalid_argument&) {
        arms.push_back(nullptr); // an arm of a kind without a solver is moved by its joints
        return;
    }
    for (const bool inTool : {false, true}) {
        for (std::size_t direction = 0; direction < Directions; ++direction) {
            axes.push_back({system, Robot, direction, moved.robot->GetName(), nullptr, inTool});
        }
    }
}

void Jog::MoveTool(const Axis& axis, double step) {
    GrpState& state = states[axis.system];
    const std::vector<double> carrier = state.GetValues(Pedestal);
    const std::vector<double> values = state.GetValues(Robot);
    const planning::CarriedArm& arm = *arms[axis.system];
    const gp_Trsf tool = arm.ToolCentreInWorld({values, carrier}).ToTrsf();
    const planning::ToolWay way = {
        [&](double part) { return Rigid::From(Moved(tool, StepOf(axis.place, part * step), axis.inTool)); },
        [&](double) { return std::vector<double>(carrier); }};
    planning::PoseFollower follower(arm, way, values);
    obstacle = follower.Follow(1) ? "" : follower.Why().Text();
    if (obstacle.empty()) {
        state.SetValues(Robot, follower.Values());
        MoveTo(cell.Systems()[axis.system], state);
    }
}

std::string Jog::ToolText(const Axis& axis) {
    GrpState& state = states[axis.system];
    const std::vector<double> values = state.GetValues(Robot);
    const Rigid tool = arms[axis.system]->ToolCentreInWorld({values, state.GetValues(Pedestal)});
    return axis.owner + " tool centre " + Names[axis.place] +
           (axis.inTool ? " of the tool" : " of the world") + ": " +
           Spaced({tool.p[0], tool.p[1], tool.p[2]}, 1) + " mm" + (obstacle.empty() ? "" : ", " + obstacle);
}

} // namespace cell
