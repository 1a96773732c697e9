#include <algorithm>
#include <cell/documents/SavedMechanism.h>
#include <cell/model/CellReader.h>
#include <cell/model/Kinds.h>

// Mechanisms, mounts and systems of a cell file, item by item.

namespace cell {

void CellReader::ReadMechanism(const JsonNode& item) {
    const std::string mechanism = item.At("name").Text();
    if (cell.Find(mechanism) != nullptr) {
        item.At("name").Refuse("a name that no other mechanism has");
    }
    const std::uint64_t hash = item.At("hash").Hash();
    if (const auto other = mechanismOfHash.find(hash); other != mechanismOfHash.end()) {
        item.At("hash").Refuse("a hash that no other mechanism has (" +
                               cell.mechanisms[other->second].entity->GetName() + " has this one)");
    }
    const JsonNode kind = item.At("kind");
    auto entity = RequireKind(MechanismKinds(), kind)(item, mechanism, hash);
    if (const auto placement = item.Find("placement")) {
        entity->SetRootMdlTrsf(ReadPlacement(*placement));
    }
    Add({kind.Text(), std::move(entity), std::make_shared<const JsonNode>(item)});
}

/// After the mounts: mounting a tool enters it into its robot's list, and the robot's document has the list
/// with the tool in it.
void CellReader::RestoreMechanisms() const {
    for (const Mechanism& mechanism : cell.mechanisms) {
        RestoreSaved(*mechanism.entity, *mechanism.node);
    }
}

void CellReader::ReadMount(const JsonNode& item) const {
    item.OnlyKeys({"entity", "on", "place", "placement"});
    GenericEntityConfig& entity = RequireMechanism(item.At("entity"));
    GenericEntityConfig& carrier = RequireMechanism(item.At("on"));
    if (entity.GetMountingEntity() != nullptr) {
        item.At("entity").Refuse("a mechanism that is not mounted yet");
    }
    const JsonNode index = item.At("place");
    const Flange* place = carrier.GetFlangeByIndex(index.Whole(0, carrier.GetFlangeSize() - 1));
    if (const auto placement = item.Find("placement")) {
        entity.SetAssembleTrsf(ReadPlacement(*placement));
    }
    Json::Value json(Json::objectValue);
    json["link_hash"] = Json::UInt64(place->linkHash);
    json["install_index"] = index.Value();
    try {
        carrier.AssembleOtherModel(&entity, json);
    } catch (const std::invalid_argument&) {
        const GenericEntity* taken = place->attached;
        item.Refuse(carrier.GetName() +
                        (taken != nullptr ? " already carries \"" + taken->GetName() + "\" there" : ""),
                    "a free place on a mechanism that the entity does not carry");
    }
    // Pedestals find their systems, and benches their workpieces, by what stands on them.
    if (carrier.GetMechanismType() == MechanismPedestal || carrier.GetMechanismType() == MechanismBench) {
        carrier.Initial();
    }
}

void CellReader::ReadSystem(const JsonNode& item) {
    item.OnlyKeys({"robot", "pedestal", "benches"});
    RobotEntity& robot = RequireRobot(item.At("robot"));
    if (cell.FindSystem(robot.GetRobotSystem()) != nullptr) {
        item.At("robot").Refuse("a robot that does not lead a system yet");
    }
    System system{&robot};
    if (const auto pedestal = item.Find("pedestal")) {
        system.pedestal = RequirePedestal(*pedestal, robot);
        system.pedestal->AddSystem(system.Hash());
    }
    if (const auto benches = item.Find("benches")) {
        system.benches = RequireBenches(*benches);
    }
    for (BenchEntity* bench : system.benches) {
        robot.AddWorkbench(bench);
    }
    Add(std::move(system));
}

GenericEntityConfig& CellReader::RequireMechanism(const JsonNode& reference) const {
    GenericEntityConfig* entity = cell.Find(reference.Text());
    if (entity == nullptr) {
        reference.Refuse("the name of a mechanism of this cell");
    }
    return *entity;
}

Workpiece& CellReader::RequireWorkpiece(const JsonNode& reference) const {
    auto* workpiece = dynamic_cast<Workpiece*>(cell.Find(reference.Text()));
    if (workpiece == nullptr) {
        reference.Refuse("the name of a workpiece of this cell");
    }
    return *workpiece;
}

RobotEntity& CellReader::RequireRobot(const JsonNode& reference) const {
    auto* robot = dynamic_cast<RobotEntity*>(cell.Find(reference.Text()));
    if (robot == nullptr) {
        reference.Refuse("the name of a robot of this cell");
    }
    return *robot;
}

PedestalEntity* CellReader::RequirePedestal(const JsonNode& reference, const RobotEntity& robot) const {
    auto* pedestal = dynamic_cast<PedestalEntity*>(cell.Find(reference.Text()));
    if (pedestal == nullptr || robot.GetMountingEntity() != pedestal) {
        reference.Refuse("the pedestal that " + robot.GetName() + " is mounted on");
    }
    return pedestal;
}

std::vector<BenchEntity*> CellReader::RequireBenches(const JsonNode& list) const {
    std::vector<BenchEntity*> benches;
    for (const JsonNode& reference : list.Items("names of benches")) {
        auto* bench = dynamic_cast<BenchEntity*>(cell.Find(reference.Text()));
        if (bench == nullptr || std::find(benches.begin(), benches.end(), bench) != benches.end()) {
            reference.Refuse("the name of a bench that the list does not have yet");
        }
        if (!benches.empty() && bench->GetLinkSize() != benches.front()->GetLinkSize()) {
            reference.Refuse("a bench with as many axes as " + benches.front()->GetName());
        }
        benches.push_back(bench);
    }
    return benches;
}

const System& CellReader::RequireSystem(const JsonNode& reference) const {
    const System* system = cell.FindSystem(RequireRobot(reference).GetRobotSystem());
    if (system == nullptr) {
        reference.Refuse("a robot that leads one of systems");
    }
    return *system;
}

} // namespace cell
