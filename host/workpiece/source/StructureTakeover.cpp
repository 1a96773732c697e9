#include <host/workpiece/GenericEntityConfig.h>
#include <stdexcept>
#include <utility>

void GenericEntity::TakeOverFrom(GenericEntity& other) {
    hashIndex = other.hashIndex;
    name = other.name;
    rootTrsf = other.rootTrsf;
    rootMdl = std::exchange(other.rootMdl, nullptr);
    fixMdls = std::exchange(other.fixMdls, {});
    links = std::exchange(other.links, {});
    linkOrder = std::exchange(other.linkOrder, {});
    flanges = std::exchange(other.flanges, {});
    currentValues = std::exchange(other.currentValues, {});
    systems = std::exchange(other.systems, {});
    assembleTrsf = other.assembleTrsf;
    chainBase = other.chainBase;
    coupling = other.coupling;
    TakeOverMounting(other);
}

GenericEntityConfig::GenericEntityConfig(GenericEntity* parent) {
    if (parent == nullptr) {
        throw std::invalid_argument("GenericEntityConfig: null parent, expected a built mechanism");
    }
    TakeOverFrom(*parent);
    if (auto* config = dynamic_cast<GenericEntityConfig*>(parent)) {
        armStructureCode = config->armStructureCode;
        parameters = std::exchange(config->parameters, {});
        mechanismType = config->mechanismType;
        endCenterTrsf = config->endCenterTrsf;
    }
    UpdateRootTrsf(rootTrsf, true);
}
