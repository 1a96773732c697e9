#include <cell/model/ArmBuilder.h>
#include <cell/model/Kinds.h>
#include <cell/text/Units.h>
#include <host/tools/gpHandle.h>

namespace cell {

namespace {

/// Largest index of the library's tool list.
constexpr std::size_t MostTools = 11;

std::vector<gp_Trsf> ReadTools(const JsonNode& item) {
    std::vector<gp_Trsf> tools;
    for (const JsonNode& tool : item.OptionalItems("tools", "tools")) {
        tools.push_back(ReadPlacement(tool));
    }
    if (tools.size() > MostTools) {
        item.At("tools").Refuse(std::to_string(tools.size()) + " tools",
                                "at most " + std::to_string(MostTools));
    }
    return tools;
}

std::shared_ptr<GenericEntityConfig> ReadRobot(const JsonNode& item, const std::string& name,
                                               std::uint64_t hash) {
    OnlyMechanismKeys(item, {"model", "structure", "tools"});
    const std::vector<gp_Trsf> tools = ReadTools(item);
    auto robot = BuildArm(ReadArm(StructureOf(item)), name, hash);
    if (!tools.empty()) {
        robot->SetTools(tools);
        robot->UpdateToolFrame();
    }
    return robot;
}

} // namespace

void OnlyMechanismKeys(const JsonNode& item, const std::vector<const char*>& own) {
    std::vector<const char*> known = {"name", "kind", "hash", "placement", "document", "package"};
    known.insert(known.end(), own.begin(), own.end());
    item.OnlyKeys(known);
}

JsonNode StructureOf(const JsonNode& item) {
    const auto model = item.Find("model");
    const auto inlined = item.Find("structure");
    if (model.has_value() == inlined.has_value()) {
        item.Refuse(model ? "both model and structure" : "neither model nor structure",
                    "either the path of a model or the structure itself");
    }
    return inlined ? *inlined : JsonNode::Load(item.File().parent_path() / model->Text());
}

gp_Trsf ReadPlacement(const JsonNode& node) {
    node.OnlyKeys({"location_mm", "euler_deg"});
    const Vec location = node.At("location_mm").Position();
    const Vec euler = node.At("euler_deg").Triple();
    return gpHandle::EulerToTrsf(LocEuler(
        gp_Pnt(location[0], location[1], location[2]),
        gp_Pnt(euler[0] * RadiansPerDegree, euler[1] * RadiansPerDegree, euler[2] * RadiansPerDegree)));
}

const std::map<std::string, MechanismReader>& MechanismKinds() {
    static const std::map<std::string, MechanismReader> kinds = {{"robot", ReadRobot},
                                                                 {"tool", ReadTool},
                                                                 {"pedestal", ReadPedestal},
                                                                 {"bench", ReadBench},
                                                                 {"workpiece", ReadWorkpiece}};
    return kinds;
}

} // namespace cell
