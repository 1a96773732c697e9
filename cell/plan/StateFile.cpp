#include <cell/InputError.h>
#include <cell/model/SystemValues.h>
#include <cell/plan/StateFile.h>
#include <json/value.h>

namespace cell {

namespace {

/// The last state or context of a trace, or the document itself.
JsonNode LastState(const JsonNode& root) {
    if (!root.Find("motions")) {
        return root;
    }
    const JsonNode motions = root.At("motions");
    std::vector<JsonNode> states;
    for (const JsonNode& motion : motions.Items("motions")) {
        const auto contexts = motion.Find("contexts");
        const std::vector<JsonNode> more =
            contexts ? contexts->Items("contexts") : motion.At("states").Items("states");
        states.insert(states.end(), more.begin(), more.end());
    }
    if (states.empty()) {
        motions.Refuse("at least one state");
    }
    return states.back();
}

GrpState ReadState(const JsonNode& node, const Cell& cell) {
    const JsonNode system = node.At("system_index");
    if (cell.FindSystem(system.Hash()) == nullptr) {
        system.Refuse("the hash of a robot that leads a system of " + cell.Name());
    }
    GrpState state(system.Hash());
    const JsonNode values = node.At("J_value");
    if (values.Numbers().size() != static_cast<std::size_t>(state.GetContextDof())) {
        values.Refuse(std::to_string(state.GetContextDof()) + " numbers");
    }
    try {
        state.FromJson(node.Value());
    } catch (const Json::Exception& error) {
        node.Refuse(error.what(), "a state as plan writes it");
    }
    return state;
}

} // namespace

std::vector<GrpState> LoadStates(const std::filesystem::path& file, const Cell& cell) {
    const JsonNode node = LastState(JsonNode::Load(file));
    std::vector<GrpState> states;
    if (const auto systems = node.Find("systems")) {
        for (const JsonNode& item : systems->Items("states")) {
            states.push_back(ReadState(item.At("Data"), cell));
        }
    } else {
        states.push_back(ReadState(node, cell));
    }
    return states;
}

void MoveToNamedState(const std::string& nameOrFile, const Cell& cell) {
    std::vector<GrpState> states;
    if (const KeyState* key = cell.FindKeyState(nameOrFile)) {
        states.push_back(key->state);
    } else if (std::error_code ignored; std::filesystem::exists(nameOrFile, ignored)) {
        states = LoadStates(nameOrFile, cell);
    } else {
        throw InputError(cell.Node().File().string(), "--state", nameOrFile,
                         "the name of a key state of the cell, or of a file with a state");
    }
    for (GrpState& state : states) {
        MoveTo(*cell.FindSystem(state.GetSystem()), state);
    }
}

} // namespace cell
