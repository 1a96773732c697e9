#include <functional>
#include <support/Mechanism.h>

// Rules that hold for the documents of all kinds of entities.

namespace {

using Entities = std::shared_ptr<GenericEntityConfig>;

struct Kind {
    const char* name;
    const char* title;
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

TEST_P(SaveLoadContract, SaveLoadSaveGivesTheSameDocument) {
    entity->SetHashIndex(0xfedcba9876543210U);
    entity->UpdateLinkModelNames();
    const Json::Value first = ThroughText(entity->ToJson(""));
    EXPECT_EQ(first["type"].asInt(), GetParam().type);
    EXPECT_EQ(ThroughText(Loaded(first)->ToJson("")), first);
}

TEST_P(SaveLoadContract, TypeIsWrittenAndNeverRead) {
    for (const Json::Value& type : {Json::Value(77), Json::Value("robot"), Json::Value()}) {
        Json::Value json = entity->ToJson("");
        json["HashID"] = 12;
        json["type"] = type;
        entity->LoadFromJson(json);
        EXPECT_EQ(entity->GetHashIndex(), 12U);
        EXPECT_EQ(entity->ToJson("")["type"].asInt(), GetParam().type);
    }
}

TEST_P(SaveLoadContract, WrongTypeOfAKeyIsRefusedAndChangesNothing) {
    const Json::Value before = entity->ToJson("");
    for (const auto& [key, value] : {std::pair<const char*, Json::Value>{"HashID", "text"},
                                     {"ID", "text"},
                                     {"ID", Json::Value(Json::arrayValue)}}) {
        Json::Value bad = before;
        bad["HashID"] = 1;
        bad[key] = value;
        EXPECT_THROW(entity->LoadFromJson(bad), std::invalid_argument) << key;
        EXPECT_EQ(entity->ToJson(""), before) << key;
    }
}

TEST_P(SaveLoadContract, ModelNamesContainTheEntityName) {
    entity->SetName("E");
    entity->AddFixMdl(sample::Block(gp_Trsf()));
    entity->UpdateLinkModelNames();
    const std::string prefix = GetParam().title + std::string(":E - ");
    EXPECT_EQ(entity->GetFixMdls().back()->GetName(), prefix + "基座");
    for (int i = 0; i < entity->GetLinkSize(); ++i) {
        const auto& models = entity->GetLink(static_cast<std::size_t>(i))->models;
        EXPECT_EQ(models.front()->GetName(), prefix + "轴" + std::to_string(i + 1));
    }
}

TEST_P(SaveLoadContract, LoadingWithoutARootModelChangesNothing) {
    const Json::Value json = entity->ToJson("");
    entity->SetRootMdl(nullptr);
    entity->SetHashIndex(3);
    entity->LoadFromJson(json);
    EXPECT_EQ(entity->GetHashIndex(), 3U);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SaveLoadContract,
                         testing::Values(Kind{"Robot", "机器人", 1, Make<RobotEntity, sample::SixAxisArm>},
                                         Kind{"Pedestal", "地轨", 2,
                                              Make<PedestalEntity, sample::TwoAxisRail>},
                                         Kind{"Bench", "工作台", 3, Make<BenchEntity, sample::Positioner>},
                                         Kind{"Tool", "工具", 4, MakeTool}),
                         sample::NameOf);

} // namespace
