#include <Precision.hxx>
#include <algorithm>
#include <cell/InputError.h>
#include <cell/model/Kinds.h>
#include <cell/plan/Reach.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <mechanism/RobotWorkspace.h>

namespace cell {

namespace {

/// The workspace builder keeps this distance from both limits.
constexpr double MarginDeg = 3;
constexpr int AngleDecimals = 4;

const Mechanism& ItemOf(const Cell& cell, const RobotEntity& robot) {
    return *std::find_if(cell.Mechanisms().begin(), cell.Mechanisms().end(),
                         [&](const Mechanism& item) { return item.entity.get() == &robot; });
}

/// Where the arm is described: the file itself, its model, or the structure inside.
JsonNode ArmNode(const JsonNode& item) { return item.Find("joints") ? item : StructureOf(item); }

void RequireSystem(const Cell& cell, RobotEntity& robot) {
    if (cell.FindSystem(robot.GetRobotSystem()) == nullptr) {
        throw InputError(cell.Node().File().string(), "systems", "none with the robot " + robot.GetName(),
                         R"(an entry {"robot": ")" + robot.GetName() +
                             R"("}, with its pedestal where it has one)");
    }
}

/// The record has a pair of limits for every joint that the coupling record lists from its first index on.
void RequireCoupling(const RobotEntity& robot, const JsonNode& item) {
    const auto& list = GrpConfig::ChangeCoupledList();
    const auto found = list.find(robot.GetHashIndex());
    if (found == list.end() || found->second.index[0] != 0) {
        item.Refuse("no coupling record for hash " + std::to_string(robot.GetHashIndex()),
                    "one in GrpConfig's list of coupled values whose index starts with joint 0");
    }
}

void RequireRanges(const RobotEntity& robot, const JsonNode& item) {
    for (int i = 0; i < robot.GetLinkSize(); ++i) {
        const auto& [low, high] = robot.GetLink(static_cast<std::size_t>(i))->GetLimit();
        if (!((high - low) / RadiansPerDegree >= 2 * MarginDeg)) {
            const std::string joint = "joints[" + std::to_string(i) + "]";
            const JsonNode arm = ArmNode(item);
            throw InputError(arm.File().string(), (arm.Path().empty() ? "" : arm.Path() + ".") + joint,
                             "min_deg " + Rounded(low / RadiansPerDegree, AngleDecimals) + " to max_deg " +
                                 Rounded(high / RadiansPerDegree, AngleDecimals),
                             "at least 6 degrees between them, since a workspace keeps 3 off each stop");
        }
    }
}

void RequireFiniteTool(RobotEntity& robot, const JsonNode& item) {
    const gp_XYZ place = robot.GetToolFromVector(robot.GetToolIndex()).TranslationPart();
    if (!(place.SquareModulus() < Precision::Infinite())) {
        item.Refuse("tool " + std::to_string(robot.GetToolIndex()) + " at " +
                        Spaced({place.X(), place.Y(), place.Z()}, AngleDecimals) + " mm",
                    "finite numbers in its tools, or in the parameters of the tool that it carries");
    }
}

} // namespace

RobotEntity& RequireRobot(const Cell& cell, const std::string& name) {
    std::string names;
    for (RobotEntity* robot : cell.Robots()) {
        if (robot->GetName() == name) {
            return *robot;
        }
        names += (names.empty() ? "" : ", ") + robot->GetName();
    }
    throw InputError(cell.Node().File().string(), "--robot", name,
                     names.empty() ? "a cell with a robot" : "one of " + names);
}

Reach ReachOf(const Cell& cell, RobotEntity& robot) {
    const JsonNode& item = *ItemOf(cell, robot).node;
    RequireSystem(cell, robot);
    RequireCoupling(robot, item);
    RequireRanges(robot, item);
    RequireFiniteTool(robot, item);
    constexpr const char* Expected =
        "an arm of 6 joints (7 where coupled), the second and third parallel, on a "
        "carrier that neither scales nor shears it";
    RobotWorkspace& workspace = *robot.GetWorkspace();
    workspace.UpdateWorkspaceShape(workspace.GetRobotData().ratio);
    // The builder only logs what is wrong with the record; the computation of the section says it.
    const auto section = [&] {
        try {
            return WorkSpace::GetRobotWorkSpace(workspace.GetRobotData());
        } catch (const std::invalid_argument& error) {
            item.Refuse(error.what(), Expected);
        }
    }();
    const opencascade::handle<BaseViewShape>& shown = workspace.GetDisplayShape();
    if (shown->Shape().IsNull()) {
        item.Refuse("no box fits its reach", Expected);
    }
    robot.UpdateMaxWork();
    const TopLoc_Location place(shown->LocalTransformation());
    return {&robot, shown->Shape().Moved(place), section,
            WorkSpace::GetRobotMaxWorkSpace(workspace.GetRobotData())[3]};
}

} // namespace cell
