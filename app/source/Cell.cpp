#include <algorithm>
#include <cell/ArmBuilder.h>
#include <cell/Cell.h>

namespace cell {

Cell Cell::Load(const std::filesystem::path& file) {
    Cell cell(JsonNode::Load(file));
    if (!cell.node.Find("mechanisms") && cell.node.Find("kind")) {
        cell.ReadArmAlone();
    } else {
        cell.ReadCell();
    }
    return cell;
}

void Cell::ReadArmAlone() {
    const ArmDescription arm = ReadArm(node);
    name = arm.name;
    mechanisms.push_back({"robot", BuildArm(arm, arm.name, HashOfName(arm.name)), node});
    systems.push_back({Robots().front()});
    Registrar::Register(systems.back());
}

void Cell::ReadCell() {
    node.OnlyKeys({"name", "mechanisms", "mounts", "systems", "key_states", "motions"});
    name = node.At("name").Text();
    for (const JsonNode& item : node.At("mechanisms").Items("mechanisms")) {
        ReadMechanism(item);
    }
    for (const JsonNode& item : node.OptionalItems("mounts", "mounts")) {
        ReadMount(item);
    }
    RestoreMechanisms();
    for (const JsonNode& item : node.OptionalItems("systems", "systems")) {
        ReadSystem(item);
    }
    if (const auto states = node.Find("key_states")) {
        for (const auto& [stateName, item] : states->Members()) {
            ReadKeyState(stateName, item);
        }
    }
    for (const JsonNode& item : node.OptionalItems("motions", "motions")) {
        ReadMotion(item);
    }
}

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
    const auto found = std::find_if(mechanisms.begin(), mechanisms.end(), [&](const Mechanism& other) {
        return other.entity->GetName() == mechanism;
    });
    return found != mechanisms.end() ? found->entity.get() : nullptr;
}

const System* Cell::FindSystem(std::uint64_t hash) const {
    const auto found = std::find_if(systems.begin(), systems.end(),
                                    [&](const System& system) { return system.Hash() == hash; });
    return found != systems.end() ? &*found : nullptr;
}

} // namespace cell
