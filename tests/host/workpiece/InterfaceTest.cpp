#include <cstring>
#include <gtest/gtest.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <numeric>

// Hosts bind to the virtual operations by their place in the table, so the order is part of the interface.

namespace {

#if defined(__GNUC__)

// The protected operations are reachable through a derived class.
struct Opened : GenericEntityConfig {
    static auto CollisionState() { return &Opened::UpdateCollisionMdlState; }
    static auto State() { return &Opened::UpdateState; }
};

// A pointer to a virtual member function holds 1 + the offset of its slot (Itanium C++ ABI).
template <class Member>
int SlotOf(Member member) {
    std::ptrdiff_t word = 0;
    static_assert(sizeof(member) >= sizeof(word));
    std::memcpy(&word, &member, sizeof(word));
    return static_cast<int>((word - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

template <class... Members>
std::vector<int> SlotsOf(Members... members) {
    return {SlotOf(members)...};
}

std::vector<int> Following(int first, std::size_t count) {
    std::vector<int> slots(count);
    std::iota(slots.begin(), slots.end(), first);
    return slots;
}

TEST(VirtualTable, HoldsTheOperationsInTheirOrder) {
    const auto before = SlotsOf(&Entity::Delete, &Entity::Hide, &Entity::ToJson, &Entity::LoadFromJson,
                                &Entity::SetEntityShape, &Entity::SetRootMdl, &Entity::SetRootMdlTrsf,
                                Opened::CollisionState());
    EXPECT_EQ(before, Following(0, 8));
    const int destructors = 2;
    const auto after =
        SlotsOf(&Entity::UpdateRootTrsf, &Entity::EntityDof, &Entity::IsInLimit, &Entity::GetLimit,
                &Entity::TransformedBy, &Entity::GetDOF, &Entity::GetCurrentValue, &Entity::SetCurrentValue,
                &Entity::GetMechanismType, &Entity::GetFixMdls, &Entity::GetCollisionFixMdls,
                &Entity::UpdateLinkModelNames, &Entity::DataToJson, &Entity::Initial,
                &Entity::CreateCollisionMdl, &Entity::GetSubCollisionParts, &Entity::UpdateAssembleData,
                &Entity::ExportParaToJson, &Entity::UpdateModelPara, Opened::State());
    EXPECT_EQ(after, Following(8 + destructors, 20));
}

#endif

} // namespace
