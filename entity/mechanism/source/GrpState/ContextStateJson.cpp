#include <mechanism/ContextState.h>

#include <json/json.h>
#include <utility>

ContextState::ContextState(const Json::Value& json) { FromJson(json); }

Json::Value ContextState::ToJson() {
    Json::Value list;
    for (auto& [system, state] : states) {
        Json::Value entry;
        entry["SystemIndex"] = static_cast<Json::UInt64>(system);
        entry["Data"] = state.ToJson();
        list.append(std::move(entry));
    }
    Json::Value json;
    json["systems"] = std::move(list);
    return json;
}

bool ContextState::FromJson(const Json::Value& json) {
    if (json.isNull() || json["system"].isNull()) {
        return false;
    }
    for (const Json::Value& entry : json["system"]) {
        GrpState state(entry["SystemIndex"].asUInt64());
        state.FromJson(entry["Data"]);
        // The document's own "system_index" is the key; it may differ from the entry's.
        const std::uint64_t system = state.GetSystem();
        states.insert_or_assign(system, std::move(state));
    }
    return true;
}
