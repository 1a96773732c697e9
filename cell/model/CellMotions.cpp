#include <algorithm>
#include <cell/model/CellReader.h>
#include <cell/model/FollowMotion.h>
#include <cell/model/Kinds.h>
#include <cell/model/SystemValues.h>
#include <cell/model/ToolPathReader.h>

// Key states of a cell file, and the motions through them.

namespace cell {

namespace {

constexpr const char* TogetherKind = "together";
constexpr const char* ToolPathKind = "tool_path";
constexpr const char* FollowKind = "follow";

} // namespace

void CellReader::ReadKeyState(const std::string& stateName, const JsonNode& item) {
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
    cell.keyStateOf.emplace(stateName, cell.keyStates.size());
    cell.keyStates.push_back({stateName, std::move(state)});
}

void CellReader::RequireNewMotion(const JsonNode& motion) const {
    if (motionOf.contains(motion.Text()) || toolPathNames.contains(motion.Text())) {
        motion.Refuse("a name that no other motion has");
    }
}

void CellReader::ReadMotion(const JsonNode& item) {
    RequireNewMotion(item.At("name"));
    const JsonNode kind = item.At("kind");
    Motion motion{item.At("name").Text(), kind.Text()};
    if (motion.kind == ToolPathKind) {
        Workpiece& workpiece = RequireWorkpiece(item.At("workpiece"));
        const auto described =
            std::find_if(cell.mechanisms.begin(), cell.mechanisms.end(),
                         [&](const Mechanism& other) { return other.entity.get() == &workpiece; });
        toolPathNames.insert(motion.name);
        cell.toolPaths.push_back(ReadToolPath(item, workpiece, *described->node));
        return;
    }
    if (motion.kind == TogetherKind) {
        item.OnlyKeys({"name", "kind", "motions"});
        motion.parts = RequireParts(item.At("motions"));
    } else {
        const bool follows = motion.kind == FollowKind;
        const MotionReader reader = follows ? nullptr : RequireKind(MotionKinds(), kind);
        motion.keys = RequireKeys(item.At("states"));
        motion.system = cell.FindSystem(motion.keys.front().state.GetSystem());
        motion.interpolate = follows ? ReadFollow(item, motion.keys, *motion.system, cell.toolPaths)
                                     : reader(item, motion.keys, *motion.system);
    }
    motionOf.emplace(motion.name, cell.motions.size());
    cell.motions.push_back(std::move(motion));
}

/// Two motions of one system cannot run together, since each sets all of its values.
std::vector<std::size_t> CellReader::RequireParts(const JsonNode& list) const {
    std::vector<std::size_t> parts;
    for (const JsonNode& reference : list.Items("names of motions")) {
        const std::string wanted = reference.Text();
        const auto found = motionOf.find(wanted);
        if (found == motionOf.end() || cell.motions[found->second].system == nullptr) {
            reference.Refuse("the name of an earlier motion of one system");
        }
        for (const std::size_t part : parts) {
            if (cell.motions[part].system == cell.motions[found->second].system) {
                reference.Refuse("a motion of another system than " + cell.motions[part].name);
            }
        }
        parts.push_back(found->second);
    }
    if (parts.size() < 2) {
        list.Refuse("at least two motions");
    }
    return parts;
}

std::vector<KeyState> CellReader::RequireKeys(const JsonNode& list) const {
    std::vector<KeyState> keys;
    for (const JsonNode& reference : list.Items("names of key states")) {
        const KeyState* found = cell.FindKeyState(reference.Text());
        if (found == nullptr) {
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

} // namespace cell
