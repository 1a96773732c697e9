#include <algorithm>
#include <cell/Cell.h>
#include <cell/JointValues.h>
#include <cell/Kinds.h>
#include <cell/SavedMechanism.h>

// The lists of a cell file, item by item.

namespace cell {

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
    item.OnlyKeys({"entity", "on", "place"});
    const auto require = [&](const char* key) -> GenericEntityConfig& {
        GenericEntityConfig* entity = Find(item.At(key).Text());
        if (entity == nullptr) {
            item.At(key).Refuse("the name of a mechanism of this cell");
        }
        return *entity;
    };
    GenericEntityConfig& entity = require("entity");
    GenericEntityConfig& carrier = require("on");
    if (entity.GetMountingEntity() != nullptr) {
        item.At("entity").Refuse("a mechanism that is not mounted yet");
    }
    const JsonNode index = item.At("place");
    const Flange* place = carrier.GetFlangeByIndex(index.Whole(0, carrier.GetFlangeSize() - 1));
    Json::Value json(Json::objectValue);
    json["link_hash"] = Json::UInt64(place->linkHash);
    json["install_index"] = index.Value();
    try {
        carrier.AssembleOtherModel(&entity, json);
    } catch (const std::invalid_argument& error) {
        item.Refuse(error.what(), "a free place on a mechanism that the entity does not carry");
    }
}

void Cell::ReadSystem(const JsonNode& item) {
    item.OnlyKeys({"robot"});
    RobotEntity& robot = RequireRobot(item.At("robot"));
    if (FindSystem(robot.GetRobotSystem()) != nullptr) {
        item.At("robot").Refuse("a robot that does not lead a system yet");
    }
    Register(robot);
}

void Cell::ReadKeyState(const std::string& stateName, const JsonNode& item) {
    item.OnlyKeys({"robot", "values_deg"});
    RobotEntity& robot = RequireSystem(item.At("robot"));
    const JsonNode list = item.At("values_deg");
    const auto refuse = [&](const std::string& shown, const std::string& expected) {
        list.Refuse(shown, expected);
    };
    // Interpolation stays between the values of its ends, so limits that hold here hold on the whole way.
    const std::vector<double> values = FullValues(robot, list.Numbers(), refuse);
    RequireInLimits(robot, values, refuse);
    GrpState state(robot.GetRobotSystem());
    state.SetValues(Robot, values);
    MoveTo(robot, values);
    state.SetLocEuler(0, robot.GetCurrentTCP());
    robot.Reset();
    keyStates.push_back({stateName, std::move(state)});
}

void Cell::ReadMotion(const JsonNode& item) {
    const JsonNode motion = item.At("name");
    const auto isSame = [&](const Motion& other) { return other.name == motion.Text(); };
    if (std::any_of(motions.begin(), motions.end(), isSame)) {
        motion.Refuse("a name that no other motion has");
    }
    const JsonNode kind = item.At("kind");
    const MotionReader reader = RequireKind(MotionKinds(), kind);
    std::vector<KeyState> keys = RequireKeys(item.At("states"));
    RobotEntity* robot = FindSystem(keys.front().state.GetSystem());
    Interpolation interpolate = reader(item, keys);
    motions.push_back({motion.Text(), kind.Text(), robot, std::move(keys), std::move(interpolate)});
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

RobotEntity& Cell::RequireRobot(const JsonNode& reference) const {
    auto* robot = dynamic_cast<RobotEntity*>(Find(reference.Text()));
    if (robot == nullptr) {
        reference.Refuse("the name of a robot of this cell");
    }
    return *robot;
}

RobotEntity& Cell::RequireSystem(const JsonNode& reference) const {
    RobotEntity& robot = RequireRobot(reference);
    if (FindSystem(robot.GetRobotSystem()) == nullptr) {
        reference.Refuse("a robot that leads one of systems");
    }
    return robot;
}

} // namespace cell
