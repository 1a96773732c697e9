#include <algorithm>
#include <cell/Cell.h>
#include <cell/Kinds.h>
#include <cell/SavedMechanism.h>
#include <cell/SystemValues.h>

// The lists of a cell file, item by item.

namespace cell {

namespace {

constexpr const char* TogetherKind = "together";
constexpr const char* ToolPathKind = "tool_path";

} // namespace

void Cell::ReadMechanism(const JsonNode& item) {
    const std::string mechanism = item.At("name").Text();
    if (Find(mechanism) != nullptr) {
        item.At("name").Refuse("a name that no other mechanism has");
    }
    const std::uint64_t hash = item.At("hash").Hash();
    for (const Mechanism& other : mechanisms) {
        if (other.entity->GetHashIndex() == hash) {
            item.At("hash").Refuse("a hash that no other mechanism has (" + other.entity->GetName() +
                                   " has this one)");
        }
    }
    const JsonNode kind = item.At("kind");
    auto entity = RequireKind(MechanismKinds(), kind)(item, mechanism, hash);
    if (const auto placement = item.Find("placement")) {
        entity->SetRootMdlTrsf(ReadPlacement(*placement));
    }
    mechanisms.push_back({kind.Text(), std::move(entity), item});
}

/// After the mounts: mounting a tool enters it into its robot's list, and the robot's document has the list
/// with the tool in it.
void Cell::RestoreMechanisms() const {
    for (const Mechanism& mechanism : mechanisms) {
        RestoreSaved(*mechanism.entity, mechanism.node);
    }
}

void Cell::ReadMount(const JsonNode& item) const {
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
    } catch (const std::invalid_argument& error) {
        item.Refuse(error.what(), "a free place on a mechanism that the entity does not carry");
    }
    // Pedestals find their systems, and benches their workpieces, by what stands on them.
    if (carrier.GetMechanismType() == MechanismPedestal || carrier.GetMechanismType() == MechanismBench) {
        carrier.Initial();
    }
}

void Cell::ReadSystem(const JsonNode& item) {
    item.OnlyKeys({"robot", "pedestal", "benches"});
    RobotEntity& robot = RequireRobot(item.At("robot"));
    if (FindSystem(robot.GetRobotSystem()) != nullptr) {
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
    Registrar::Register(system);
    systems.push_back(std::move(system));
}

void Cell::ReadKeyState(const std::string& stateName, const JsonNode& item) {
    const System& system = RequireSystem(item.At("robot"));
    std::vector<const char*> known = ValueKeys(system, "values_deg");
    known.push_back("robot");
    item.OnlyKeys(known);
    // Interpolation stays between the values of its ends, so limits that hold here hold on the whole way.
    GrpState state(system.Hash());
    state.SetValues(ReadSystemValues(item, system));
    MoveTo(system, state);
    state.SetLocEuler(0, system.robot->GetCurrentTCP());
    ResetSystem(system);
    keyStates.push_back({stateName, std::move(state)});
}

void Cell::RequireNewMotion(const JsonNode& motion) const {
    const auto isSame = [&](const auto& other) { return other.name == motion.Text(); };
    if (std::any_of(motions.begin(), motions.end(), isSame) ||
        std::any_of(toolPaths.begin(), toolPaths.end(), isSame)) {
        motion.Refuse("a name that no other motion has");
    }
}

void Cell::ReadMotion(const JsonNode& item) {
    RequireNewMotion(item.At("name"));
    const JsonNode kind = item.At("kind");
    Motion motion{item.At("name").Text(), kind.Text()};
    if (motion.kind == ToolPathKind) {
        Workpiece& workpiece = RequireWorkpiece(item.At("workpiece"));
        const auto described =
            std::find_if(mechanisms.begin(), mechanisms.end(),
                         [&](const Mechanism& other) { return other.entity.get() == &workpiece; });
        toolPaths.push_back(ReadToolPath(item, workpiece, described->node));
        return;
    }
    if (motion.kind == TogetherKind) {
        item.OnlyKeys({"name", "kind", "motions"});
        motion.parts = RequireParts(item.At("motions"));
    } else {
        const MotionReader reader = RequireKind(MotionKinds(), kind);
        motion.keys = RequireKeys(item.At("states"));
        motion.system = FindSystem(motion.keys.front().state.GetSystem());
        motion.interpolate = reader(item, motion.keys, *motion.system);
    }
    motions.push_back(std::move(motion));
}

/// Two motions of one system would ask it to be in two places.
std::vector<std::size_t> Cell::RequireParts(const JsonNode& list) const {
    std::vector<std::size_t> parts;
    for (const JsonNode& reference : list.Items("names of motions")) {
        const std::string wanted = reference.Text();
        const auto found = std::find_if(motions.begin(), motions.end(),
                                        [&](const Motion& motion) { return motion.name == wanted; });
        if (found == motions.end() || found->system == nullptr) {
            reference.Refuse("the name of an earlier motion of one system");
        }
        for (const std::size_t part : parts) {
            if (motions[part].system == found->system) {
                reference.Refuse("a motion of another system than " + motions[part].name);
            }
        }
        parts.push_back(static_cast<std::size_t>(found - motions.begin()));
    }
    if (parts.size() < 2) {
        list.Refuse("at least two motions");
    }
    return parts;
}

std::vector<KeyState> Cell::RequireKeys(const JsonNode& list) const {
    std::vector<KeyState> keys;
    for (const JsonNode& reference : list.Items("names of key states")) {
        const std::string wanted = reference.Text();
        const auto found = std::find_if(keyStates.begin(), keyStates.end(),
                                        [&](const KeyState& key) { return key.name == wanted; });
        if (found == keyStates.end()) {
            reference.Refuse("the name of one of key_states");
        }
        if (!keys.empty() && keys.front().state.GetSystem() != found->state.GetSystem()) {
            reference.Refuse("a state of the same robot as " + keys.front().name);
        }
        keys.push_back(*found);
    }
    if (keys.size() < 2) {
        list.Refuse("at least two key states");
    }
    return keys;
}

GenericEntityConfig& Cell::RequireMechanism(const JsonNode& reference) const {
    GenericEntityConfig* entity = Find(reference.Text());
    if (entity == nullptr) {
        reference.Refuse("the name of a mechanism of this cell");
    }
    return *entity;
}

Workpiece& Cell::RequireWorkpiece(const JsonNode& reference) const {
    auto* workpiece = dynamic_cast<Workpiece*>(Find(reference.Text()));
    if (workpiece == nullptr) {
        reference.Refuse("the name of a workpiece of this cell");
    }
    return *workpiece;
}

RobotEntity& Cell::RequireRobot(const JsonNode& reference) const {
    auto* robot = dynamic_cast<RobotEntity*>(Find(reference.Text()));
    if (robot == nullptr) {
        reference.Refuse("the name of a robot of this cell");
    }
    return *robot;
}

PedestalEntity* Cell::RequirePedestal(const JsonNode& reference, const RobotEntity& robot) const {
    auto* pedestal = dynamic_cast<PedestalEntity*>(Find(reference.Text()));
    if (pedestal == nullptr || robot.GetMountingEntity() != pedestal) {
        reference.Refuse("the pedestal that " + robot.GetName() + " is mounted on");
    }
    return pedestal;
}

std::vector<BenchEntity*> Cell::RequireBenches(const JsonNode& list) const {
    std::vector<BenchEntity*> benches;
    for (const JsonNode& reference : list.Items("names of benches")) {
        auto* bench = dynamic_cast<BenchEntity*>(Find(reference.Text()));
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

const System& Cell::RequireSystem(const JsonNode& reference) const {
    const System* system = FindSystem(RequireRobot(reference).GetRobotSystem());
    if (system == nullptr) {
        reference.Refuse("a robot that leads one of systems");
    }
    return *system;
}

} // namespace cell
