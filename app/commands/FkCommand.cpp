#include <app/commands/Commands.h>
#include <app/commands/PoseLine.h>
#include <cell/InputError.h>
#include <cell/model/ChooseRobot.h>
#include <cell/model/JointValues.h>
#include <cell/text/Text.h>
#include <istream>
#include <ostream>

namespace cell {

namespace {

Json::Value ToJson(const gp_XYZ& point) {
    Json::Value json(Json::arrayValue);
    for (const double number : {point.X(), point.Y(), point.Z()}) {
        json.append(number);
    }
    return json;
}

Json::Value RowsToJson(const gp_Trsf& trsf) {
    Json::Value rows(Json::arrayValue);
    for (int row = 1; row <= 3; ++row) {
        rows.append(ToJson(trsf.HVectorialPart().Row(row)));
    }
    return rows;
}

Json::Value PosesToJson(const RobotEntity& robot) {
    Json::Value json(Json::objectValue);
    const gp_Trsf flange = robot.GetCurrentTrsfTool0();
    const gp_Trsf tcp = robot.GetCurrentTrsfTCP();
    json["flange_origin_mm"] = ToJson(flange.TranslationPart());
    json["flange_rotation"] = RowsToJson(flange);
    json["tcp_origin_mm"] = ToJson(tcp.TranslationPart());
    json["tcp_rotation"] = RowsToJson(tcp);
    for (int i = 0; i < robot.GetLinkSize(); ++i) {
        const LinkRod& link = *robot.GetLink(static_cast<std::size_t>(i));
        json["joint_origins_mm"].append(ToJson(link.GetJointOrigin().Transformed(link.worldTrsf).XYZ()));
    }
    return json;
}

/// Reads sets of values, and takes note of those outside the limits.
class ValueReader {
public:
    ValueReader(RobotEntity& robot_, const FkRequest& request_, std::ostream& remarks_)
        : robot(robot_), request(request_), remarks(remarks_) {}

    std::vector<std::vector<double>> ReadAll(std::istream& in) const {
        if (request.values) {
            return {Read(*request.values, "--values-deg")};
        }
        std::vector<std::vector<double>> sets;
        std::string line;
        for (std::size_t number = 1; std::getline(in, line); ++number) {
            if (line.find_first_not_of(" \t\r") != std::string::npos) {
                AddLine(line, "standard input, line " + std::to_string(number), sets);
            }
        }
        if (sets.empty()) {
            throw InputError(request.file.string(), "standard input", "no values",
                             "a line for each set of values");
        }
        return sets;
    }

private:
    void AddLine(const std::string& line, const std::string& place,
                 std::vector<std::vector<double>>& sets) const {
        if (line.find_first_not_of(" \t") != line.find('{')) {
            sets.push_back(Read(line, place));
            return;
        }
        const std::string full = request.file.string() + ": " + place;
        for (const std::vector<double>& numbers : ReadSolutions(ParseLine(line, full), full)) {
            sets.push_back(Read(numbers, place));
        }
    }
    std::vector<double> Read(const std::string& text, const std::string& place) const {
        const auto numbers = ParseNumbers(text);
        if (!numbers) {
            throw InputError(request.file.string(), place, text,
                             "finite numbers separated by commas or blanks");
        }
        return Read(*numbers, place);
    }
    std::vector<double> Read(const std::vector<double>& numbers, const std::string& place) const {
        const auto refuse = [&](const std::string& shown, const std::string& expected) {
            throw InputError(request.file.string(), place, shown, expected);
        };
        std::vector<double> values = FullValues(robot, numbers, refuse);
        RequireInLimits(robot, values, [&](const std::string& shown, const std::string& expected) {
            const InputError report(request.file.string(), place, shown, expected);
            if (request.strict) {
                throw report;
            }
            remarks << report.what() << "; computed all the same\n";
        });
        return values;
    }

    RobotEntity& robot;
    const FkRequest& request;
    std::ostream& remarks;
};

} // namespace

void Fk(const FkRequest& request, std::istream& in, std::ostream& out, std::ostream& remarks) {
    const Cell cell = Cell::Load(request.file);
    RobotEntity& robot = ChooseRobot(cell, request.file, request.robot);
    for (const std::vector<double>& values : ValueReader(robot, request, remarks).ReadAll(in)) {
        MoveTo(robot, values);
        out << JsonLine(PosesToJson(robot)) << '\n';
    }
}

} // namespace cell
