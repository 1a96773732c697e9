#include <cell/model/ArmBuilder.h>
#include <cell/model/Cell.h>
#include <cell/text/Notice.h>

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
    Add({"robot", BuildArm(arm, arm.name, HashOfName(arm.name)), node});
    Add(System{Robots().front()});
}

void Cell::Add(Mechanism mechanism) {
    mechanismOf.emplace(mechanism.entity->GetName(), mechanisms.size());
    mechanismOfHash.emplace(mechanism.entity->GetHashIndex(), mechanisms.size());
    mechanisms.push_back(std::move(mechanism));
}

void Cell::Add(System system) {
    systemOfHash.emplace(system.Hash(), systems.size());
    Registrar::Register(system);
    systems.push_back(std::move(system));
}

void Cell::ReadCell() {
    node.OnlyKeys({"name", "mechanisms", "mounts", "systems", "key_states", "motions"});
    name = node.At("name").Text();
    const auto items = node.At("mechanisms").Items("mechanisms");
    for (const JsonNode& item : items) {
        NoticeItem("mechanisms", mechanisms.size(), items.size());
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
        const auto members = states->Members();
        for (const auto& [stateName, item] : members) {
            NoticeItem("key_states", keyStates.size(), members.size());
            ReadKeyState(stateName, item);
        }
    }
    for (const JsonNode& item : node.OptionalItems("motions", "motions")) {
        ReadMotion(item);
    }
    Notice("");
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
    const auto found = mechanismOf.find(mechanism);
    return found != mechanismOf.end() ? mechanisms[found->second].entity.get() : nullptr;
}

const System* Cell::FindSystem(std::uint64_t hash) const {
    const auto found = systemOfHash.find(hash);
    return found != systemOfHash.end() ? &systems[found->second] : nullptr;
}

const KeyState* Cell::FindKeyState(const std::string& state) const {
    const auto found = keyStateOf.find(state);
    return found != keyStateOf.end() ? &keyStates[found->second] : nullptr;
}

} // namespace cell
