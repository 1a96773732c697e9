#include <app/commands/Commands.h>
#include <app/commands/PoseLine.h>
#include <cell/InputError.h>
#include <cell/model/ChooseRobot.h>
#include <cell/text/Text.h>
#include <cell/text/Units.h>
#include <istream>
#include <json/value.h>
#include <ostream>
#include <planning/CarriedArm.h>

namespace cell {

namespace {

using planning::Solution;
using planning::Solutions;

Json::Value ToJson(const Solution& solution, std::size_t joints) {
    Json::Value json(Json::objectValue);
    for (std::size_t i = 0; i < joints; ++i) {
        json["values_deg"].append(solution.values[i] / RadiansPerDegree);
    }
    json["shoulder"] = planning::Name(solution.configuration.shoulder);
    json["elbow"] = planning::Name(solution.configuration.elbow);
    json["wrist"] = planning::Name(solution.configuration.wrist);
    json["singular"] = solution.singular != planning::NotSingular;
    return json;
}

Json::Value ToJson(const Solutions& solutions, const planning::InverseKinematics& solver) {
    Json::Value json(Json::objectValue);
    json["solutions"] = Json::Value(Json::arrayValue);
    for (const Solution& solution : solutions) {
        solver.ForEachTurn(solution, [&](const Solution& turned) {
            json["solutions"].append(ToJson(turned, solver.Joints()));
        });
    }
    if (solutions.outcome == planning::Outcome::OutOfReach) {
        json["reason"] = "out of reach";
        json["excess_mm"] = solutions.excess;
    } else if (solutions.outcome == planning::Outcome::OutsideLimits) {
        json["reason"] = "outside the limits";
    }
    return json;
}

/// The arm where its carriers stand now. @throws InputError for an arm that has no solver.
planning::InverseKinematics SolverOf(const RobotEntity& robot, const std::filesystem::path& file) {
    try {
        return planning::InverseKinematics(robot);
    } catch (const std::invalid_argument& error) {
        throw InputError(file.string() + ": " + robot.GetName() + ": " + error.what());
    }
}

} // namespace

void Ik(const IkRequest& request, std::istream& in, std::ostream& out) {
    const Cell cell = Cell::Load(request.file);
    const RobotEntity& robot = ChooseRobot(cell, request.file, request.robot);
    const planning::InverseKinematics solver = SolverOf(robot, request.file);
    const gp_Trsf toBase = robot.GetParentAssembleTrsf().Inverted();
    const bool flange = request.frame == "flange";
    std::string line;
    bool any = false;
    for (std::size_t number = 1; std::getline(in, line); ++number) {
        if (line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        any = true;
        const std::string place = request.file.string() + ": standard input, line " + std::to_string(number);
        const Rigid pose = Rigid::From(toBase) * ReadPose(ParseLine(line, place), request.frame, place);
        const Solutions solutions = flange ? solver.Flange(pose) : solver.ToolCentre(pose);
        out << JsonLine(ToJson(solutions, solver)) << '\n';
    }
    if (!any) {
        throw InputError(request.file.string(), "standard input", "no poses",
                         "a line for each pose, as fk prints them");
    }
}

} // namespace cell
