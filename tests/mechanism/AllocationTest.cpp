// A sanitizer counts and pairs allocations itself, and takes replaced operators for mismatched ones.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define UNDER_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define UNDER_ADDRESS_SANITIZER
#endif

#ifndef UNDER_ADDRESS_SANITIZER

#include <atomic>
#include <cstdlib>
#include <new>
#include <support/Mechanism.h>

namespace {

std::atomic<int> allocations = 0;

template <class Work>
int CountAllocations(Work work) {
    const int before = allocations;
    work();
    return allocations - before;
}

TEST(Allocations, AStateCostsItsValuesItsPosesAndALongText) {
    const Registrar cell(1, {});
    GrpState state(1), target(1);
    EXPECT_EQ(CountAllocations([&] { const GrpState copy(state); }), 2);
    EXPECT_EQ(CountAllocations([&] { target = state; }), 1) << "poses fit into the place of the old ones";
    target.SetValue(Robot, 0, 1000);
    constexpr int SequenceAndStride = 2;
    const std::vector<double> steps(6, 1);
    EXPECT_EQ(CountAllocations([&] { InterpHandle::InterpolationPts(state, target, steps); }),
              2 * 1001 + SequenceAndStride);
    state.SetCmdTypeAndCmd(MoveCmdLogical, std::string(100, 'x'));
    EXPECT_EQ(CountAllocations([&] { const GrpState copy(state); }), 3);
}

} // namespace

// Kept out of line: where only one of the pair is inlined, GCC takes them for mismatched.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
[[gnu::noinline]] void* operator new[](std::size_t size) { return operator new(size); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { operator delete(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

#endif
