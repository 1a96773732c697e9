#include <functional>
#include <gtest/gtest.h>
#include <mechanism/BenchEntity.h>
#include <mechanism/PedestalEntity.h>
#include <mechanism/RobotEntity.h>
#include <mechanism/ToolEntity.h>
#include <support/SampleMechanisms.h>
#include <support/SampleTools.h>
#include <support/Text.h>

// What every entity promises of its document, whatever kind it is.

namespace {

using Entities = std::shared_ptr<GenericEntityConfig>;

struct Kind {
    const char* name;
    int type;
    std::function<Entities()> make;
};

template <class Entity, auto Sample>
Entities Make() {
    return std::make_shared<Entity>(sample::Build(Sample(), 41, "saved").get());
}

Entities MakeTool() { return ToolEntity::CreateToolEntityByParameter(sample::TorchParameters()).second; }

class SaveLoadContract : public testing::TestWithParam<Kind> {
protected:
    Entities Loaded(const Json::Value& json) const {
        const Entities other = GetParam().make();
        other->SetName(entity->GetName());
        other->LoadFromJson(json);
        return other;
    }

    const Entities entity = GetParam().make();
};

TEST_P(SaveLoadContract, SaveLoadSaveGivesTheSameDocumentAlsoThroughText) {
    entity->SetHashIndex(0xfedcba9876543210U);
    entity->UpdateLinkModelNames();
    const Json::Value first = ThroughText(entity->ToJson(""));
    EXPECT_EQ(first["type"].asInt(), GetParam().type);
    EXPECT_EQ(ThroughText(Loaded(first)->ToJson("")), first);
}

TEST_P(SaveLoadContract, RefusesADocumentOfAnotherKindAndStaysAsItWas) {
    const Json::Value before = entity->ToJson("");
    for (const auto& [key, value] : {std::pair<const char*, Json::Value>{"type", 77},
                                     {"HashID", "text"},
                                     {"ID", "text"},
                                     {"ID", Json::Value(Json::arrayValue)}}) {
        Json::Value bad = before;
        bad["HashID"] = 1;
        bad[key] = value;
        EXPECT_THROW(entity->LoadFromJson(bad), std::invalid_argument) << key;
        EXPECT_EQ(entity->ToJson(""), before) << key;
    }
}

TEST_P(SaveLoadContract, NothingIsLoadedWithoutARootModel) {
    const Json::Value json = entity->ToJson("");
    entity->SetRootMdl(nullptr);
    entity->SetHashIndex(3);
    entity->LoadFromJson(json);
    EXPECT_EQ(entity->GetHashIndex(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SaveLoadContract,
                         testing::Values(Kind{"Robot", 1, Make<RobotEntity, sample::SixAxisArm>},
                                         Kind{"Pedestal", 2, Make<PedestalEntity, sample::TwoAxisRail>},
                                         Kind{"Bench", 3, Make<BenchEntity, sample::Positioner>},
                                         Kind{"Tool", 4, MakeTool}),
                         [](const auto& kind) { return std::string(kind.param.name); });

} // namespace
