#include <app/commands/InfoJson.h>
#include <cell/model/Systems.h>
#include <cell/text/Units.h>
#include <host/tools/gpHandle.h>
#include <mechanism/ToolEntity.h>

namespace cell {

namespace {

Json::Value Numbers(const gp_XYZ& xyz) {
    Json::Value list(Json::arrayValue);
    for (int i = 1; i <= 3; ++i) {
        list.append(xyz.Coord(i));
    }
    return list;
}

Json::Value Pose(const LocEuler& pose) {
    Json::Value json;
    json["location_mm"] = Numbers(pose.location.XYZ());
    json["euler_deg"] = Numbers(pose.euler.XYZ() / RadiansPerDegree);
    return json;
}

Json::Value Pose(const gp_Trsf& trsf) { return Pose(gpHandle::TrsfToEuler(trsf)); }

Json::Value Axes(const GenericEntity& entity) {
    Json::Value axes(Json::arrayValue);
    for (const LinkRod* link : AxesOf(entity)) {
        const double unit = FileUnit(*link);
        const gp_Ax1 axis = link->axis.Transformed(link->worldTrsf);
        Json::Value json;
        json["unit"] = Slides(*link) ? "mm" : "deg";
        json["min"] = link->GetLimit().first / unit;
        json["max"] = link->GetLimit().second / unit;
        json["direction"] = Numbers(axis.Direction().XYZ());
        json["origin_mm"] = Numbers(axis.Location().XYZ());
        axes.append(std::move(json));
    }
    return axes;
}

void AddRobot(RobotEntity& robot, Json::Value& json) {
    robot.Reset();
    json["structure"] = robot.GetArmStructureCode();
    json["coupled"] = robot.IsCouplingRobot();
    json["stands_up"] = robot.IsRobotUp();
    for (const auto& [a, alpha, d, theta] : robot.GetArmDH()) {
        Json::Value row;
        row["a_mm"] = a;
        row["alpha_deg"] = alpha / RadiansPerDegree;
        row["d_mm"] = d;
        row["theta_deg"] = theta / RadiansPerDegree;
        json["table"].append(std::move(row));
    }
    robot.GetCurrentTool(); // one past the end of the list becomes an identity in it
    for (const gp_Trsf& tool : robot.GetTools()) {
        json["tools"].append(Pose(tool));
    }
    json["current_tool"] = robot.GetToolIndex();
    json["tcp_at_zero"] = Pose(robot.GetCurrentTCP());
}

void AddTool(ToolEntity& tool, Json::Value& json) {
    json["work"] = tool.GetToolWorkType() == ToolEntity::WorkTypePainting ? "painting" : "welding";
    json["tool_centre"] = Pose(tool.GetToolTrsf());
}

Json::Value ToJson(const Mechanism& mechanism) {
    GenericEntityConfig& entity = *mechanism.entity;
    Json::Value json;
    json["name"] = entity.GetName();
    json["kind"] = mechanism.kind;
    json["hash"] = Json::UInt64(entity.GetHashIndex());
    json["placement"] = Pose(entity.GetRootMdlTrsf());
    if (const GenericEntity* carrier = entity.GetMountingEntity()) {
        json["mounted_on"] = carrier->GetName();
        json["place"] = entity.GetInstallIndex();
    }
    if (auto* robot = dynamic_cast<RobotEntity*>(&entity)) {
        AddRobot(*robot, json);
    } else if (auto* tool = dynamic_cast<ToolEntity*>(&entity)) {
        AddTool(*tool, json);
    }
    json["axes"] = Axes(entity);
    return json;
}

Json::Value Slice(const GrpConfig& layout, const GenericEntity& entity, EntityName name) {
    int start = 0;
    int count = 0;
    layout.GetIndex(name, start, count);
    Json::Value json;
    json["entity"] = entity.GetName();
    json["start"] = start;
    json["count"] = count;
    return json;
}

/// As many independent values as come before the first entry that is none.
Json::Value Coupling(std::uint64_t system, int count) {
    const CoupedValue& record = GrpConfig::GetCoupledValue(system);
    Json::Value json;
    json["enabled"] = record.enabled;
    json["index"] = Json::Value(Json::arrayValue);
    for (int i = 0; i < count && i < CoupedValue::Capacity; ++i) {
        json["ratio"].append(record.ratio[i]);
        json["skip"].append(record.skip[i]);
    }
    for (const std::int32_t index : record.index) {
        if (index < 0 || index >= count) {
            break;
        }
        json["index"].append(index);
    }
    return json;
}

Json::Value ToJson(const System& system) {
    const GrpConfig& layout = *GrpConfig::GetGrpConfig(system.Hash());
    Json::Value json;
    json["hash"] = Json::UInt64(system.Hash());
    json["values"] = layout.GetContextDof();
    json["slices"].append(Slice(layout, *system.robot, Robot));
    if (system.pedestal != nullptr) {
        json["slices"].append(Slice(layout, *system.pedestal, Pedestal));
    }
    for (std::size_t i = 0; i < system.benches.size(); ++i) {
        json["slices"].append(
            Slice(layout, *system.benches[i], static_cast<EntityName>(Bench + static_cast<int>(i))));
    }
    json["coupling"] = Coupling(system.Hash(), system.robot->GetDOF(0));
    return json;
}

Json::Value ToJson(const Cell& cell, const Motion& motion) {
    Json::Value json;
    json["name"] = motion.name;
    json["kind"] = motion.kind;
    for (const KeyState& key : motion.keys) {
        json["states"].append(key.name);
    }
    for (const std::size_t part : motion.parts) {
        json["motions"].append(cell.Motions()[part].name);
    }
    return json;
}

} // namespace

Json::Value CellToJson(const Cell& cell) {
    Json::Value json;
    json["name"] = cell.Name();
    for (const char* list : {"mechanisms", "systems", "key_states", "motions", "tool_paths"}) {
        json[list] = Json::Value(Json::arrayValue);
    }
    for (const Mechanism& mechanism : cell.Mechanisms()) {
        json["mechanisms"].append(ToJson(mechanism));
    }
    for (const System& system : cell.Systems()) {
        json["systems"].append(ToJson(system));
    }
    for (const KeyState& key : cell.KeyStates()) {
        Json::Value state;
        state["name"] = key.name;
        state["system"] = Json::UInt64(key.state.GetSystem());
        state["tcp"] = Pose(key.state.GetLocEuler(0));
        json["key_states"].append(std::move(state));
    }
    for (const Motion& motion : cell.Motions()) {
        json["motions"].append(ToJson(cell, motion));
    }
    for (const ToolPath& path : cell.ToolPaths()) {
        Json::Value item;
        item["name"] = path.name;
        item["workpiece"] = path.workpiece->GetName();
        item["poses"] = Json::UInt64(path.poses.size());
        json["tool_paths"].append(std::move(item));
    }
    return json;
}

} // namespace cell
