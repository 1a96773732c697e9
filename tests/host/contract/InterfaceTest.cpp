#include <cstring>
#include <gtest/gtest.h>
#include <host/workpiece/GenericEntityConfig.h>

// Hosts bind to the virtual operations by their place in the table, so the order is part of the interface.

namespace {

#if defined(__GNUC__)

// The protected operations are reachable through a derived class.
struct Opened : GenericEntityConfig {
    static auto CollisionState() { return &Opened::UpdateCollisionMdlState; }
    static auto State() { return &Opened::UpdateState; }
};

// A pointer to a virtual member function holds 1 + the offset of its slot (Itanium C++ ABI).
template <class... Members>
std::vector<std::size_t> SlotsOf(Members... members) {
    const auto slot = [](auto member) {
        std::size_t word = 0;
        std::memcpy(&word, &member, sizeof(word));
        return (word - 1) / sizeof(void*);
    };
    return {slot(members)...};
}

TEST(VirtualTable, VirtualOperationsKeepTheirOrder) {
    const auto slots = SlotsOf(
        &Entity::Delete, &Entity::Hide, &Entity::ToJson, &Entity::LoadFromJson, &Entity::SetEntityShape,
        &Entity::SetRootMdl, &Entity::SetRootMdlTrsf, Opened::CollisionState(), &Entity::UpdateRootTrsf,
        &Entity::EntityDof, &Entity::IsInLimit, &Entity::GetLimit, &Entity::TransformedBy, &Entity::GetDOF,
        &Entity::GetCurrentValue, &Entity::SetCurrentValue, &Entity::GetMechanismType, &Entity::GetFixMdls,
        &Entity::GetCollisionFixMdls, &Entity::UpdateLinkModelNames, &Entity::DataToJson, &Entity::Initial,
        &Entity::CreateCollisionMdl, &Entity::GetSubCollisionParts, &Entity::UpdateAssembleData,
        &Entity::ExportParaToJson, &Entity::UpdateModelPara, Opened::State());
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i], i < 8 ? i : i + 2) << "the two destructors follow the first eight";
    }
}

#endif

} // namespace
