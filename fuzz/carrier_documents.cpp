#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <fuzz/Subject.h>
#include <mechanism/mechanism.h>
#include <support/SampleTools.h>

// Documents of benches, pedestals and tools, and single links of a mechanism: a refused one leaves the entity
// as it was.

namespace {

template <class Entity>
void Load(Subject<Entity>& entity, FuzzedDataProvider& bytes) {
    try {
        entity->LoadFromJson(fuzz::Document(bytes, entity.Good()));
        entity->ToJson("");
        entity.Renew();
    } catch (const std::invalid_argument&) {
        entity.RequireUnchanged();
    }
}

void Load(ToolEntity& tool, FuzzedDataProvider& bytes) {
    const Json::Value before = tool.ToJson("");
    try {
        tool.LoadFromJson(fuzz::Document(bytes, before));
        tool.LoadFromJson(before);
    } catch (const std::invalid_argument&) {
        fuzz::Require(tool.ToJson("") == before);
    }
}

template <class Entity>
void UpdateLink(Subject<Entity>& entity, FuzzedDataProvider& bytes) {
    Json::Value good = entity->LinkToJson(entity->GetLink(1));
    good["axis_min"] = -90.0;
    good["axis_max"] = 90.0;
    try {
        entity->UpdateLinkRodPara(fuzz::Document(bytes, good), bytes.ConsumeBool());
        entity->DataToJson("");
        entity.Renew();
    } catch (const std::invalid_argument&) {
        entity.RequireUnchanged();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    static Subject<PedestalEntity> rail(sample::TwoAxisRail);
    static Subject<BenchEntity> bench(sample::Positioner);
    static const auto tool = ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second;
    FuzzedDataProvider bytes(data, size);
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        Load(rail, bytes);
        break;
    case 1:
        Load(bench, bytes);
        break;
    case 2:
        Load(*tool, bytes);
        break;
    default:
        UpdateLink(bench, bytes);
    }
    return quiet;
}
