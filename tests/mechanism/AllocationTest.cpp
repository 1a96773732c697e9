// Not for sanitizers, which replace the allocator themselves and report these operators as mismatched.
#include <support/AddressSanitizer.h>

#ifndef UNDER_ADDRESS_SANITIZER

#include <atomic>
#include <cstdlib>
#include <gp.hxx>
#include <json/json.h>
#include <new>
#include <support/Mechanism.h>

namespace {

std::atomic<int> allocations = 0;
std::atomic<int> living = 0;
std::atomic<int> untilFailure = 0; // counts down; 0 and below never fails

template <class Work>
int CountAllocations(Work work) {
    const int before = allocations;
    work();
    return allocations - before;
}

TEST(Allocations, StateAllocatesOnlyValuesPosesAndLongText) {
    const Registrar registrar(1, {});
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

/// Runs work with its first, second, ... allocation failing until it succeeds, and checks that nothing leaks.
template <class Work, class Whole>
void ExpectWholeAtEveryFailure(Work work, Whole whole) {
    const std::string before = whole();
    for (int n = 1;; ++n) {
        ASSERT_LT(n, 10000);
        const int livingBefore = living;
        bool failed = false;
        untilFailure = n;
        try {
            work();
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        const bool through = !failed && untilFailure > 0;
        untilFailure = 0;
        if (through) {
            EXPECT_GT(n, 1) << "nothing was allocated";
            return;
        }
        EXPECT_TRUE(failed) << "allocation " << n << ": its failure was lost";
        ASSERT_EQ(living, livingBefore) << "allocation " << n << " leaks";
        ASSERT_TRUE(whole() == before) << "allocation " << n;
    }
}

struct Exhausted : testing::Test {
    const Registrar registrar{1, {.pedestal = 1, .robots = 2}};
    GrpState a{1}, b{1};
    std::vector<std::vector<double>> out = {{1}};
    std::vector<InterpHandle::PathPose> path = {
        {gp_Pnt(), gp::DZ()}, {gp_Pnt(10, 0, 0), gp::DZ()}, {gp_Pnt(20, 5, 0), gp_Dir(0.1, 0, 1)}};
    std::vector<GrpState> sequence;

    void SetUp() override {
        b.SetCmdTypeAndCmd(MoveCmdLogical, std::string(100, 'b'));
        b.SetValues({1, 2, 3});
        b.SetLocEuler(0, {gp_Pnt(10, 0, 0), gp_Pnt(0, 1, 0)});
        sequence = {b, a, b};
        a.SetCmdTypeAndCmd(MoveCmdLogical, std::string(60, 'a'));
    }
    std::string Inputs() {
        std::ostringstream text;
        text << a.ToJson() << b.ToJson() << out.size() << path.size() << path.back().first.X();
        for (GrpState& state : sequence) {
            text << state.ToJson();
        }
        return text.str();
    }
    template <class Work>
    void Hold(Work work) {
        ExpectWholeAtEveryFailure(work, [this] { return Inputs(); });
    }
    /// Called after a first run, in which the kernel creates objects that it keeps.
    template <class Work>
    void HoldWarm(Work work) {
        work();
        Hold(work);
    }
};

TEST_F(Exhausted, FailedAllocationLeavesStatesUnchanged) {
    Hold([&] { const GrpState copy(b); });
    Hold([&] {
        GrpState target(a), source(b), moved(std::move(source));
        target = std::move(moved);
    });
    GrpState target(a);
    target = GrpState();
    const auto fields = [&] { return target.GetLogicalCmd() + std::to_string(target.GetSystem()); };
    ExpectWholeAtEveryFailure([&] { target = b; }, fields);
    Hold([&] { a = b; });
    Hold([&] { GrpStateUtils::RemoveDuplicatedStates(sequence, 0.1); });
    Hold([&] { GrpStateUtils::SortRobotStateJ(a, sequence, 3); });
    const Json::Value json = b.ToJson();
    ExpectWholeAtEveryFailure([&] { ContextState().FromJson(json); }, [] { return std::string(); });
}

TEST_F(Exhausted, FailedAllocationLeavesInputsUnchanged) {
    using namespace InterpHandle;
    const std::vector<double> steps(13, 0.5);
    const LocEuler& from = a.GetLocEuler(0);
    const LocEuler& to = b.GetLocEuler(0);
    HoldWarm([&] { InterpolationPts(a, b, steps); });
    HoldWarm([&] { InterpolationPts(sequence, steps); });
    HoldWarm([&] { InterpolationPts(from.location, to.location, 1); });
    HoldWarm([&] { InterpolationPtsByNum({1, 2}, {3, 4}, 3); });
    HoldWarm([&] { InterpolationPtsByNum(from.location, to.location, 3); });
    HoldWarm([&] { InterpolationPtsByPosGap(a, b, 3); });
    HoldWarm([&] { InterpolationScalePts(a, b, 0.5); });
    HoldWarm([&] { InterpolationPtsDescartes({0, 1}, {5, 0}, 1); });
    HoldWarm([&] { EquallyDisInterpolate({{0}, {5}}, out, 1); });
    HoldWarm([&] { EulerByQuaternion(from.euler, to.euler, 5); });
    HoldWarm([&] { InterpolationPtsByQuaternion(a, b, 4.0); });
    HoldWarm([&] { InterpolationPtsByQuaternion(from, to, 2.0); });
    HoldWarm([&] { InterpolationPtsByQuaternion(from, to, 2.0, 0.1); });
    HoldWarm([&] { SplineInterpolation(path, 2); });
    HoldWarm([&] { SparsePathPair(path, 2); });
}

} // namespace

// Not inlined: GCC warns of mismatched operators where only one of the pair is.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (untilFailure > 0 && --untilFailure == 0) {
        untilFailure = -1;
        throw std::bad_alloc();
    }
    if (void* const memory = std::malloc(size)) {
        ++living;
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    living -= memory != nullptr ? 1 : 0;
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }
[[gnu::noinline]] void* operator new[](std::size_t size) { return operator new(size); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { operator delete(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { operator delete(memory); }

#endif
