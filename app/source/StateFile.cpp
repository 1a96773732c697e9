#include <cell/StateFile.h>
#include <json/value.h>

namespace cell {

namespace {

JsonNode LastState(const JsonNode& root) {
    if (!root.Find("motions")) {
        return root;
    }
    const JsonNode motions = root.At("motions");
    std::vector<JsonNode> states;
    for (const JsonNode& motion : motions.Items("motions")) {
        const std::vector<JsonNode> more = motion.At("states").Items("states");
        states.insert(states.end(), more.begin(), more.end());
    }
    if (states.empty()) {
        motions.Refuse("at least one state");
    }
    return states.back();
}

} // namespace

GrpState LoadState(const std::filesystem::path& file, const Cell& cell) {
    const JsonNode node = LastState(JsonNode::Load(file));
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

} // namespace cell
