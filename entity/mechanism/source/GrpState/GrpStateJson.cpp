#include <mechanism/GrpState.h>

#include "Checked.h"

#include <algorithm>
#include <json/json.h>
#include <utility>

Json::Value GrpState::ToJson() {
    Json::Value jointValues;
    for (int i = 0; i < CountValues(); ++i) {
        jointValues.append(values[i]);
    }
    Json::Value poses;
    for (const LocEuler& pose : tcps) {
        poses.append(LocEulerToJson(pose, 6));
    }
    // Keys without a copy: the document of a path uses a hundred thousand of them.
    Json::Value json;
    json[Json::StaticString("J_value")] = std::move(jointValues);
    json[Json::StaticString("tcp_value")] = std::move(poses);
    json[Json::StaticString("system_index")] = static_cast<Json::UInt64>(system);
    json[Json::StaticString("NeedExport")] = needExport;
    json[Json::StaticString("Model")] = static_cast<Json::Int>(moveModel);
    json[Json::StaticString("LocalCmd")] = logicalCmd;
    json[Json::StaticString("RobotCmdType")] = static_cast<Json::Int>(cmdType);
    json[Json::StaticString("RobotPathType")] = static_cast<Json::Int>(pathType);
    json[Json::StaticString("ToolIndex")] = static_cast<Json::Int>(toolIndex);
    json[Json::StaticString("ZOffset")] = static_cast<double>(offset);
    return json;
}

bool GrpState::FromJson(const Json::Value& json) {
    if (json.isNull()) {
        return false;
    }
    const std::uint64_t named = json["system_index"].asUInt64();
    ReadValues(json);
    system = named;
    const auto& entry = mechanism_detail::At(GrpConfig::GetGrpConfigList(), named);
    if (entry == nullptr) {
        mechanism_detail::RefuseKey();
    }
    config = entry.get();
    ReadFields(json);
    return true;
}

void GrpState::ReadValues(const Json::Value& json) {
    const Json::Value& jointValues = json["J_value"];
    if (!jointValues.isArray()) {
        return;
    }
    const int count = CountValues();
    std::vector<double> newValues;
    if (std::cmp_greater_equal(jointValues.size(), count)) {
        for (int i = 0; i < count; ++i) {
            newValues.push_back(jointValues[i].asDouble());
        }
    }
    const Json::Value& poses = json["tcp_value"];
    std::vector<LocEuler> newPoses(tcps.size());
    for (std::size_t robot = 0; robot < tcps.size(); ++robot) {
        newPoses[robot] = LocEulerFromJson(poses[static_cast<Json::ArrayIndex>(robot)]);
    }
    std::copy(newValues.begin(), newValues.end(), values);
    tcps = std::move(newPoses);
}

void GrpState::ReadFields(const Json::Value& json) {
    const bool newExport = json["NeedExport"].asBool();
    const int newModel = json["Model"].asInt();
    std::string newCmd = json["LocalCmd"].asString();
    const int newCmdType = json["RobotCmdType"].asInt();
    const int newPathType = json["RobotPathType"].asInt();
    const unsigned newTool = json["ToolIndex"].asUInt();
    offset = json["ZOffset"].asFloat();
    needExport = newExport;
    moveModel = static_cast<MoveModel>(newModel);
    logicalCmd = std::move(newCmd);
    cmdType = static_cast<RobotMoveCmdType>(newCmdType);
    pathType = static_cast<RobotPathType>(newPathType);
    toolIndex = static_cast<unsigned short>(newTool & 0xFFFFU);
}
