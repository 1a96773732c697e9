#include "Checked.h"
#include "DhTable.h"
#include "Document.h"
#include "Failure.h"
#include "Format.h"
#include "ModelNames.h"

#include <algorithm>
#include <host/tools/Angles.h>
#include <host/tools/DataHandle.h>
#include <host/tools/RefusedValue.h>
#include <mechanism/RobotEntity.h>
#include <optional>
#include <stdexcept>
#include <utility>

using namespace mechanism_detail;

namespace {

using Angles::DegreesPerRadian;

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

// Rows of the document, or nothing where an element is no row, so that the table must come from the links. A
// value that is no array has no rows.
std::optional<std::vector<RobotEntity::DhRow>> ReadTable(const Json::Value& json) {
    std::vector<RobotEntity::DhRow> table;
    for (const Json::Value& numbers : json) {
        if (!numbers.isArray()) {
            return std::nullopt;
        }
        RobotEntity::DhRow row{};
        if (numbers.size() > row.size()) {
            Refuse("DH", numbers, "at most four numbers a row");
        }
        for (Json::ArrayIndex i = 0; i < numbers.size(); ++i) {
            if (!numbers[i].isNumeric() || !DataHandle::IsSound(numbers[i].asDouble())) {
                Refuse("DH", numbers, "finite numbers within 1e9");
            }
            row[i] = numbers[i].asDouble();
        }
        table.push_back(row);
    }
    return table;
}

std::vector<gp_Trsf> ReadTools(const Json::Value& json) {
    if (!json.isArray()) {
        Refuse("ToolLib", json, "an array of transforms");
    }
    std::vector<gp_Trsf> tools;
    for (Json::ArrayIndex i = 0; i < json.size(); ++i) {
        try {
            tools.push_back(DataHandle::JsonArrToTrsf(json[i]));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument(format("ToolLib[{}]: {}", i, error.what()));
        }
    }
    return tools;
}

int ReadToolIndex(const Json::Value& json) {
    const int index = ReadInt(json, "CurrentToolIndex");
    if (index < 0) {
        Refuse("CurrentToolIndex", json["CurrentToolIndex"], "0 or more");
    }
    return index;
}

// A link's record of the document, with the keys that link and table row determine set.
Json::Value CompletedRecord(const Json::Value& json, std::size_t number, const LinkRod& link,
                            const RobotEntity::DhRow& row) {
    Json::Value record = json[LinkKey(number)];
    if (!record.isNull() && !record.isObject()) {
        Refuse(LinkKey(number), record, "an object");
    }
    record["name"] = "Link" + std::to_string(number);
    record["joint_type"] = static_cast<int>(JointZ);
    record["joint_value"] = 0;
    record["link_hash"] = Json::UInt64(link.linkHash);
    record["parent_link_hash"] = Json::UInt64(link.parent != nullptr ? link.parent->linkHash : 0);
    record["center_trsf"] = DataHandle::TrsfToJsonSix(DhToTrsf(row));
    return record;
}

// Everything that can be refused is read before the robot changes; only a table longer than the chain is
// detected during the change.
struct RobotDocument {
    Uuid id;
    std::uint64_t hash = 0;
    std::optional<std::vector<gp_Trsf>> tools;
    int currentTool = 0;
    std::optional<std::vector<RobotEntity::DhRow>> table;
    int brand = 0;
};

RobotDocument ReadDocument(const Json::Value& json) {
    RequireObject(json);
    RobotDocument document;
    document.id = ReadId(json);
    document.hash = ReadHash(json, "HashID");
    if (!json["ToolLib"].isNull()) {
        document.tools = ReadTools(json["ToolLib"]);
        document.currentTool = ReadToolIndex(json);
        if (document.tools->empty() && document.currentTool >= RobotEntity::ToolLimit) {
            RefuseSubscript(); // otherwise tool 0 would be returned
        }
    }
    document.table = ReadTable(json["DH"]);
    document.brand = ReadInt(json, "RobotBrand");
    return document;
}

void RequireSound(const std::vector<RobotEntity::DhRow>& table) {
    for (const auto& row : table) {
        if (!std::all_of(row.begin(), row.end(), DataHandle::IsSound)) {
            throw std::invalid_argument(
                "DH: rows that add up to lengths above 1e9, expected sums within 1e9");
        }
    }
}

// Rewrites the links of a chain to a table, row by row.
// @return false where the chain has fewer links than the table rows.
bool RewriteLinks(GenericEntityConfig& arm, const Json::Value& json,
                  const std::vector<RobotEntity::DhRow>& table) {
    LinkRod* link = arm.GetRootLink(0);
    for (std::size_t i = 0; i < table.size(); ++i, link = link->GetSubLink(0)) {
        if (link == nullptr) {
            return false;
        }
        try {
            arm.UpdateLinkRodPara(CompletedRecord(json, i + 1, *link, table[i]), false);
        } catch (const RefusedValue& refused) {
            throw refused.Inside(LinkKey(i + 1));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument(LinkKey(i + 1) + "." + error.what());
        }
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

void RobotEntity::TryOnCopy(const Json::Value& json, const std::vector<DhRow>& table) const {
    GenericEntityConfig copy;
    copy.SetArmStructureCode(GetArmStructureCode());
    for (const auto& link : links) {
        Json::Value record = LinkToJson(link.get());
        record["joint_type"] = static_cast<int>(JointZ);
        record["joint_value"] = 0;
        copy.UpdateLinkRodPara(record, false);
    }
    if (RewriteLinks(copy, json, table)) {
        RequireSound(GetArmDH1989(&copy));
    }
}

void RobotEntity::LoadFromJson(const Json::Value& json) {
    if (GetRootMdl().IsNull()) {
        return;
    }
    RobotDocument document = ReadDocument(json);
    TryOnCopy(json, document.table ? *document.table : GetArmDH1989(this));
    GetRootMdl()->SetId(document.id);
    SetHashIndex(document.hash);
    if (document.tools) {
        tools = std::move(*document.tools);
        currentTool = document.currentTool;
    }
    Initial();
    armDH = document.table ? std::move(*document.table) : GetArmDH1989(this);
    if (!RewriteLinks(*this, json, armDH)) {
        Fail(family::RobotEntity, __LINE__, "RobotEntity::LoadFromJson", "存在异常的空数据");
    }
    UpdateInfo();
    robotBrand = document.brand;
}

void RobotEntity::ExportParaToJson(Json::Value& out) { out["RobotBrand"] = robotBrand; }

void RobotEntity::UpdateLinkModelNames() {
    NameModels(*this, "机器人");
    UpdateInfo();
}
