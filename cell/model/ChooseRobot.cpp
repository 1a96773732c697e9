#include <cell/InputError.h>
#include <cell/model/ChooseRobot.h>

namespace cell {

RobotEntity& ChooseRobot(const Cell& cell, const std::filesystem::path& file, const std::string& name) {
    const std::vector<RobotEntity*> robots = cell.Robots();
    if (name.empty()) {
        if (robots.size() != 1) {
            throw InputError(file.string(), "mechanisms", std::to_string(robots.size()) + " robots",
                             "one, or --robot to name it");
        }
        return *robots.front();
    }
    for (RobotEntity* robot : robots) {
        if (robot->GetName() == name) {
            return *robot;
        }
    }
    throw InputError(file.string(), "--robot", name, "the name of one of its robots");
}

} // namespace cell
