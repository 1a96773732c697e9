#include <cell/model/Kinds.h>
#include <cmath>
#include <host/tools/CADParamConfig.h>
#include <mechanism/ToolEntity.h>

namespace cell {

namespace {

/// Spray cones need two different radii: smallest difference, mm.
constexpr double SameRadius = 0.01;

int ReadWorkType(const JsonNode& item) {
    const auto node = item.Find("work_type");
    const int type = node ? node->Whole(ToolEntity::WorkTypeWelding, ToolEntity::WorkTypePainting)
                          : ToolEntity::WorkTypeWelding;
    if (type != ToolEntity::WorkTypeWelding && type != ToolEntity::WorkTypePainting) {
        node->Refuse("0 for welding or 2 for painting");
    }
    return type;
}

void ReadPaint(const JsonNode& item, int workType) {
    const auto paint = item.Find("paint");
    if (workType != ToolEntity::WorkTypePainting) {
        if (paint) {
            paint->Refuse("a paint cone", "none, as work_type is not 2");
        }
        return;
    }
    CADParamConfig& config = *CADParamConfig::GetInstance();
    config.paintShown = paint.has_value();
    if (!paint) {
        return;
    }
    paint->OnlyKeys({"up_radius_mm", "down_radius_mm", "length_mm"});
    const double up = paint->At("up_radius_mm").Length();
    const double down = paint->At("down_radius_mm").Length();
    if (std::abs(up - down) < SameRadius) {
        paint->At("down_radius_mm").Refuse("a radius other than up_radius_mm");
    }
    config.paintLength = paint->At("length_mm").Length();
    config.paintUpRadius = up;
    config.paintDownRadius = down;
}

/// @throws InputError naming the parameter.
std::shared_ptr<ToolEntity> BuildTool(const JsonNode& node, int workType) {
    node.OnlyKeys({"Type", "tip_radius", "tip_length", "nozzle_radius", "nozzle_length", "neck_radius",
                   "body_radius", "tcp_z", "tcp_x", "torch_angle", "body_length", "stick_out",
                   "guard_clearance"});
    if (node.At("Type").Text() != "WeldGun") {
        node.At("Type").Refuse("\"WeldGun\", the one shape of tool that can be built");
    }
    Json::Value parameters = node.Value();
    parameters["ToolWorkType"] = workType;
    try {
        auto [built, tool] = ToolEntity::CreateToolEntityByParameter(parameters);
        if (!built) {
            node.Refuse("no tool comes of these numbers",
                        "a nozzle that is wider than the tip and leaves the neck room to bend");
        }
        return tool;
    } catch (const RefusedValue& refused) {
        node.Refuse(refused);
    }
}

} // namespace

std::shared_ptr<GenericEntityConfig> ReadTool(const JsonNode& item, const std::string& name,
                                              std::uint64_t hash) {
    OnlyMechanismKeys(item, {"parameters", "work_type", "paint"});
    const int workType = ReadWorkType(item);
    ReadPaint(item, workType);
    auto tool = BuildTool(item.At("parameters"), workType);
    tool->SetName(name);
    tool->SetHashIndex(hash);
    tool->UpdateLinkModelNames();
    return tool;
}

} // namespace cell
