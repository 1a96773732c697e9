#include "Checked.h"
#include "DhTable.h"
#include "Failure.h"
#include "Format.h"

#include <host/tools/DataHandle.h>
#include <mechanism/RobotEntity.h>
#include <numbers>

using namespace mechanism_detail;

namespace {

constexpr double DegreesPerRadian = 180.0 / std::numbers::pi;

std::string LinkKey(std::size_t number) { return "J" + std::to_string(number); }

Json::Value LinkRecord(const LinkRod& link) {
    Json::Value record(Json::objectValue);
    record["axis_min"] = link.GetLimit().first * DegreesPerRadian;
    record["axis_max"] = link.GetLimit().second * DegreesPerRadian;
    for (const auto& model : link.models) {
        if (model.IsNull()) {
            Log(spdlog::level::warn, family::RobotEntity, __LINE__, "RobotEntity::ToJson",
                "不应该有空的节点出现");
            continue;
        }
        record["axis_models"].append(model->GetId().ToString());
    }
    return record;
}

Json::Value TableToJson(const std::vector<RobotEntity::DhRow>& table) {
    Json::Value json;
    for (const auto& row : table) {
        Json::Value numbers;
        for (const double number : row) {
            numbers.append(number);
        }
        json.append(numbers);
    }
    return json;
}

// Rows as the document has them, or nothing where an element is no row and the table must come from the
// links.
bool ReadTable(const Json::Value& json, std::vector<RobotEntity::DhRow>& table) {
    table.clear();
    for (const Json::Value& numbers : json) {
        if (!numbers.isArray()) {
            return false;
        }
        RobotEntity::DhRow row{};
        for (Json::ArrayIndex i = 0; i < numbers.size() && i < row.size(); ++i) {
            row[i] = numbers[i].asDouble();
        }
        table.push_back(row);
    }
    return true;
}

} // namespace

Json::Value RobotEntity::ToJson(const std::string& path) {
    ExportEntityPkg(this, path);
    Json::Value json = Entity::ToJson("");
    json["type"] = static_cast<int>(MechanismRobot);
    std::size_t number = 1;
    for (LinkRod* link = rootLink; link != nullptr && link->IsValid(); link = link->GetSubLink(0)) {
        json[LinkKey(number++)] = LinkRecord(*link);
    }
    for (const gp_Trsf& tool : tools) {
        json["ToolLib"].append(DataHandle::TrsfToJsonArr(tool));
    }
    json["CurrentToolIndex"] = currentTool;
    json["entityTrsf"] = DataHandle::TrsfToJsonArr(GetRootMdlTrsf());
    json["DH"] = TableToJson(armDH);
    for (const GenericEntity* bench : workbenches) {
        json["Workbenches"].append(Json::UInt64(bench->GetHashIndex()));
    }
    const GenericEntity* bench = GetCurrentWorkbench();
    json["CBench"] = Json::UInt64(bench != nullptr ? bench->GetHashIndex() : 0);
    return json;
}

void RobotEntity::LoadFromJson(const Json::Value& json) {
    if (GetRootMdl().IsNull()) {
        return;
    }
    GetRootMdl()->SetId(Uuid::FromString(json["ID"].asString()));
    SetHashIndex(json["HashID"].asUInt64());
    if (!json["ToolLib"].isNull()) {
        tools.clear();
        for (const Json::Value& tool : json["ToolLib"]) {
            tools.push_back(DataHandle::JsonArrToTrsf(tool));
        }
        currentTool = json["CurrentToolIndex"].asInt();
    }
    Initial();
    if (!ReadTable(json["DH"], armDH)) {
        armDH = GetArmDH1989(this);
    }
    LinkRod* link = rootLink;
    for (std::size_t i = 0; i < armDH.size(); ++i) {
        if (link == nullptr) {
            Fail(family::RobotEntity, __LINE__, "RobotEntity::LoadFromJson", "存在异常的空数据");
        }
        Json::Value record = json[LinkKey(i + 1)];
        record["name"] = "Link" + std::to_string(i + 1);
        record["joint_type"] = static_cast<int>(JointZ);
        record["joint_value"] = 0;
        record["link_hash"] = Json::UInt64(link->linkHash);
        record["parent_link_hash"] = Json::UInt64(link->parent != nullptr ? link->parent->linkHash : 0);
        record["center_trsf"] = DataHandle::TrsfToJsonSix(DhToTrsf(armDH[i]));
        UpdateLinkRodPara(record, false);
        link = link->GetSubLink(0);
    }
    UpdateInfo();
    robotBrand = json["RobotBrand"].asInt();
}

void RobotEntity::ExportParaToJson(Json::Value& out) { out["RobotBrand"] = robotBrand; }

void RobotEntity::UpdateLinkModelNames() {
    for (const auto& [key, model] : GetFixMdlMap()) {
        model->SetName(format("机器人:{} - 基座", GetName()));
    }
    for (std::size_t i = 0; i < links.size(); ++i) {
        for (const auto& model : links[i]->models) {
            if (!model.IsNull()) {
                model->SetName(format("机器人:{} - 轴{}", GetName(), i + 1));
            }
        }
    }
    UpdateInfo();
}
