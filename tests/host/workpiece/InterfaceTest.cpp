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
template <class Member>
int SlotOf(Member member) {
    std::ptrdiff_t word = 0;
    static_assert(sizeof(member) >= sizeof(word));
    std::memcpy(&word, &member, sizeof(word));
    return static_cast<int>((word - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

TEST(VirtualTable, HoldsTheOperationsInTheirOrder) {
    const std::vector<int> slots = {
        SlotOf(&Entity::Delete),
        SlotOf(&Entity::Hide),
        SlotOf(&Entity::ToJson),
        SlotOf(&Entity::LoadFromJson),
        SlotOf(&Entity::SetEntityShape),
        SlotOf(&Entity::SetRootMdl),
        SlotOf(&Entity::SetRootMdlTrsf),
        SlotOf(Opened::CollisionState()),
        8,
        9, // the two entries of the virtual destructor
        SlotOf(&Entity::UpdateRootTrsf),
        SlotOf(&Entity::EntityDof),
        SlotOf(&Entity::IsInLimit),
        SlotOf(&Entity::GetLimit),
        SlotOf(&Entity::TransformedBy),
        SlotOf(&Entity::GetDOF),
        SlotOf(&Entity::GetCurrentValue),
        SlotOf(&Entity::SetCurrentValue),
        SlotOf(&Entity::GetMechanismType),
        SlotOf(&Entity::GetFixMdls),
        SlotOf(&Entity::GetCollisionFixMdls),
        SlotOf(&Entity::UpdateLinkModelNames),
        SlotOf(&Entity::DataToJson),
        SlotOf(&Entity::Initial),
        SlotOf(&Entity::CreateCollisionMdl),
        SlotOf(&Entity::GetSubCollisionParts),
        SlotOf(&Entity::UpdateAssembleData),
        SlotOf(&Entity::ExportParaToJson),
        SlotOf(&Entity::UpdateModelPara),
        SlotOf(Opened::State()),
    };
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i], static_cast<int>(i));
    }
}

#endif

} // namespace
