#include <cell/bodies/CarrierShapes.h>
#include <cell/model/Kinds.h>
#include <host/tools/DataHandle.h>
#include <mechanism/BenchEntity.h>
#include <mechanism/PedestalEntity.h>

namespace cell {

namespace {

Json::Value LinkRecord(std::size_t number, const CarrierJoint& joint) {
    Json::Value record(Json::objectValue);
    record["name"] = "Link" + std::to_string(number);
    record["joint_type"] = static_cast<int>(joint.type);
    record["joint_value"] = 0;
    record["link_hash"] = Json::UInt64(number);
    record["parent_link_hash"] = Json::UInt64(number - 1);
    record["center_trsf"] = DataHandle::TrsfToJsonSix(gp_Trsf());
    for (const Triple& triple : {joint.origin, joint.axis}) {
        for (const double coordinate : triple) {
            record["joint_axis"].append(coordinate);
        }
    }
    record["axis_min"] = joint.low;
    record["axis_max"] = joint.high;
    return record;
}

/// One link a joint, one after the other, and the flange on the last; links keep the carrier's own frame.
void Build(const CarrierDescription& carrier, GenericEntityConfig& structure) {
    const Bodies bodies = ShapeCarrier(carrier);
    AddBase(bodies.base, structure);
    for (std::size_t i = 0; i < carrier.joints.size(); ++i) {
        LinkRod* link = structure.UpdateLinkRodPara(LinkRecord(i + 1, carrier.joints[i]), false);
        for (const Body& body : bodies.links[i]) {
            link->models.push_back(MakeModel(body, Rigid()));
        }
    }
    structure.AddFlange(std::make_shared<Flange>(structure.GetEndLink(0), carrier.flange.ToTrsf()));
}

template <typename Entity>
std::shared_ptr<GenericEntityConfig> ReadCarrierOf(const char* kind, const JsonNode& item,
                                                   const std::string& name, std::uint64_t hash) {
    OnlyMechanismKeys(item, {"model", "structure"});
    const CarrierDescription carrier = ReadCarrier(StructureOf(item), kind);
    GenericEntityConfig structure;
    structure.SetName(name);
    structure.SetHashIndex(hash);
    Build(carrier, structure);
    auto entity = std::make_shared<Entity>(&structure);
    entity->UpdateLinkModelNames();
    return entity;
}

} // namespace

std::shared_ptr<GenericEntityConfig> ReadPedestal(const JsonNode& item, const std::string& name,
                                                  std::uint64_t hash) {
    return ReadCarrierOf<PedestalEntity>("pedestal", item, name, hash);
}

std::shared_ptr<GenericEntityConfig> ReadBench(const JsonNode& item, const std::string& name,
                                               std::uint64_t hash) {
    return ReadCarrierOf<BenchEntity>("bench", item, name, hash);
}

} // namespace cell
