#include <gtest/gtest.h>
#include <host/tools/Uuid.h>
#include <set>
#include <support/SampleMechanisms.h>

namespace {

TEST(Uuid, TextIsCanonicalOrRefused) {
    const Uuid fresh = Uuid::CreateUuid();
    EXPECT_TRUE(Uuid::FromString(fresh.ToString()) == fresh);
    const std::string lower = "0a1b2c3d-4e5f-4a7b-8c9d-aabbccddeeff";
    EXPECT_EQ(Uuid::FromString("0A1B2C3D-4E5F-4a7b-8C9D-AABBCCDDEEFF").ToString(), lower);
    EXPECT_EQ((Uuid{Uuid::FromString(lower).value, ""}).ToString(), lower);
    EXPECT_EQ(Uuid::FromString("").ToString(), "");
    const std::string bad[] = {"robot",
                               lower + " ",
                               lower.substr(1),
                               lower + '\0' + "x",
                               "0a1b2c3d4e5f-4a7b-8c9d-aabbccddeeff0",
                               "0a1b2c3d-4e5f-4a7b-8c9d-aabbccddeefg"};
    for (const std::string& text : bad) {
        EXPECT_THROW(Uuid::FromString(text), std::invalid_argument) << text;
    }
}

TEST(Uuid, FreshIdentifiersDiffer) {
    std::set<std::string> texts;
    for (int i = 0; i < 10000; ++i) {
        texts.insert(Uuid::CreateUuid().ToString());
    }
    EXPECT_EQ(texts.size(), 10000U);
}

TEST(ViewShape, IdentityOutlivesTheGeometry) {
    const auto part = sample::Block(gp_Trsf());
    const auto later = sample::Block(gp_Trsf());
    const Uuid id = Uuid::FromString("0a1b2c3d-4e5f-4a7b-8c9d-aabbccddeeff");
    part->SetId(id);
    part->SetName("part");
    part->SetPrimitiveProperty("primitive", later->GetId());
    part->SetShape(later->Shape());
    EXPECT_TRUE(part->GetId() == id);
    EXPECT_EQ(part->GetName(), "part");
    EXPECT_EQ(part->GetPrimitiveProperty().name, "primitive");
    EXPECT_TRUE(part->GetPrimitiveProperty().id == later->GetId());
    EXPECT_FALSE(part->GetId() == later->GetId());
    EXPECT_LT(part->GetSerial(), later->GetSerial()) << "the order of creation";
}

// Keys are a host's own choice; fixed models come in the order of their keys, which is that of their
// addition.
TEST(FixedModels, AreFoundByTheirKeyAndKeepTheirOrder) {
    const auto entity = sample::Build(sample::Positioner(), 9);
    EXPECT_TRUE(entity->GetPart(1).IsNull());
    std::vector<opencascade::handle<ShapeEntity>> parts;
    for (int i = 0; i < 3; ++i) {
        parts.push_back(sample::Block(gp_Trsf()));
        const std::uint64_t key = entity->AddFixMdl(parts.back());
        EXPECT_NE(key, 0U);
        EXPECT_EQ(parts.back()->GetHashKey(), key);
        EXPECT_EQ(entity->GetPart(key), parts.back());
    }
    EXPECT_EQ(entity->GetFixMdls(), parts);
    entity->AddSubMdlList({parts[2], parts[0]}, false);
    EXPECT_EQ(entity->GetFixMdls(), (std::vector{parts[0], parts[2]})) << "in the order of creation";
}

TEST(Entity, WeakReferencesExpireAndHoldersAreTold) {
    auto entity = sample::Build(sample::Positioner(), 9);
    auto gone = sample::Build(sample::Positioner(), 10);
    const auto holder = sample::Build(sample::Positioner(), 11);
    const auto life = entity->GetLife();
    int told = 0;
    entity->TellAtEnd(*gone, [&] { told += 100; });
    entity->TellAtEnd(*holder, [&] { told += 10; });
    entity->TellAtEnd(*holder, [&] { ++told; });
    gone.reset();
    entity.reset();
    EXPECT_TRUE(life.expired());
    EXPECT_EQ(told, 1) << "the last call of the holder that is left";
}

} // namespace
