#include <cell/model/ArmBuilder.h>
#include <cell/model/CellReader.h>
#include <cell/model/Systems.h>
#include <cell/text/Notice.h>

namespace cell {

CellReader::CellReader(JsonNode node_) : node(std::move(node_)) {
    cell.node = std::make_shared<const JsonNode>(node);
}

Cell CellReader::Read() && {
    if (!node.Find("mechanisms") && node.Find("kind")) {
        ReadArmAlone();
    } else {
        ReadCell();
    }
    return std::move(cell);
}

void CellReader::ReadArmAlone() {
    const ArmDescription arm = ReadArm(node);
    cell.name = arm.name;
    Add({"robot", BuildArm(arm, arm.name, HashOfName(arm.name)), cell.node});
    Add(System{cell.Robots().front()});
}

void CellReader::Add(Mechanism mechanism) {
    cell.mechanismOf.emplace(mechanism.entity->GetName(), cell.mechanisms.size());
    mechanismOfHash.emplace(mechanism.entity->GetHashIndex(), cell.mechanisms.size());
    cell.mechanisms.push_back(std::move(mechanism));
}

void CellReader::Add(System system) {
    cell.systemOf.emplace(system.Hash(), cell.systems.size());
    Registrar::Register(system);
    cell.systems.push_back(std::move(system));
}

void CellReader::ReadCell() {
    node.OnlyKeys({"name", "mechanisms", "mounts", "systems", "key_states", "motions"});
    cell.name = node.At("name").Text();
    const auto items = node.At("mechanisms").Items("mechanisms");
    for (const JsonNode& item : items) {
        NoticeItem("mechanisms", cell.mechanisms.size(), items.size());
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
            NoticeItem("key_states", cell.keyStates.size(), members.size());
            ReadKeyState(stateName, item);
        }
    }
    for (const JsonNode& item : node.OptionalItems("motions", "motions")) {
        ReadMotion(item);
    }
    Notice("");
}

} // namespace cell
