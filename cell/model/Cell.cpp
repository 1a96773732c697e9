#include <cell/Cell.h>
#include <cell/documents/JsonNode.h>
#include <cell/model/CellReader.h>

namespace cell {

Cell::Cell() = default;
Cell::Cell(Cell&&) noexcept = default;
Cell& Cell::operator=(Cell&&) noexcept = default;
Cell::~Cell() = default;

Cell Cell::Load(const std::filesystem::path& file) { return CellReader(JsonNode::Load(file)).Read(); }

std::vector<RobotEntity*> Cell::Robots() const {
    std::vector<RobotEntity*> robots;
    for (const Mechanism& mechanism : mechanisms) {
        if (auto* robot = dynamic_cast<RobotEntity*>(mechanism.entity.get())) {
            robots.push_back(robot);
        }
    }
    return robots;
}

GenericEntityConfig* Cell::Find(const std::string& mechanism) const {
    const auto found = mechanismOf.find(mechanism);
    return found != mechanismOf.end() ? mechanisms[found->second].entity.get() : nullptr;
}

const System* Cell::FindSystem(std::uint64_t hash) const {
    const auto found = systemOf.find(hash);
    return found != systemOf.end() ? &systems[found->second] : nullptr;
}

const KeyState* Cell::FindKeyState(const std::string& state) const {
    const auto found = keyStateOf.find(state);
    return found != keyStateOf.end() ? &keyStates[found->second] : nullptr;
}

} // namespace cell
