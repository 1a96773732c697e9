#include <mechanism/GrpState.h>

#include "Checked.h"
#include <json/json.h>
#include <utility>

Json::Value GrpState::ToJson() {
    Json::Value jointValues;
    for (int i = 0; i < config->contextDof; ++i) {
        jointValues.append(values[i]);
    }
    Json::Value poses;
    for (const LocEuler& pose : tcps) {
        poses.append(LocEulerToJson(pose, 6));
    }
    Json::Value json;
    json["J_value"] = std::move(jointValues);
    json["tcp_value"] = std::move(poses);
    json["system_index"] = static_cast<Json::UInt64>(system);
    json["NeedExport"] = needExport;
    json["Model"] = static_cast<Json::Int>(moveModel);
    json["LocalCmd"] = logicalCmd;
    json["RobotCmdType"] = static_cast<Json::Int>(cmdType);
    json["RobotPathType"] = static_cast<Json::Int>(pathType);
    json["ToolIndex"] = static_cast<Json::Int>(toolIndex);
    json["ZOffset"] = static_cast<double>(offset);
    return json;
}

bool GrpState::FromJson(const Json::Value& json) {
    if (json.isNull()) {
        return false;
    }
    if (const Json::Value& jointValues = json["J_value"]; jointValues.isArray()) {
        if (std::cmp_greater_equal(jointValues.size(), config->contextDof)) {
            for (int i = 0; i < config->contextDof; ++i) {
                values[i] = jointValues[i].asDouble();
            }
        }
        const Json::Value& poses = json["tcp_value"];
        for (std::size_t robot = 0; robot < tcps.size(); ++robot) {
            tcps[robot] = LocEulerFromJson(poses[static_cast<Json::ArrayIndex>(robot)]);
        }
    }
    system = json["system_index"].asUInt64();
    config = mechanism_detail::At(GrpConfig::GetGrpConfigList(), system).get();
    needExport = json["NeedExport"].asBool();
    moveModel = static_cast<MoveModel>(json["Model"].asInt());
    logicalCmd = json["LocalCmd"].asString();
    cmdType = static_cast<RobotMoveCmdType>(json["RobotCmdType"].asInt());
    pathType = static_cast<RobotPathType>(json["RobotPathType"].asInt());
    toolIndex = static_cast<unsigned short>(json["ToolIndex"].asUInt() & 0xFFFFU);
    offset = json["ZOffset"].asFloat();
    return true;
}
