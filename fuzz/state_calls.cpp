#include <array>
#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <mechanism/mechanism.h>
#include <support/Registrar.h>

// Sequences of calls on a few states, contexts and traces. Copies, moves and loads in any order keep every
// buffer with one owner; only what changes values is kept from states that have none, as it ends the process.

namespace {

constexpr std::array<std::uint64_t, 2> Systems = {5, 9};

struct Pool {
    std::array<GrpState, 4> states;
    std::array<ContextState, 2> contexts;
    std::array<TracePair, 2> traces;
};

template <class T, std::size_t N>
T& Pick(std::array<T, N>& all, FuzzedDataProvider& bytes) {
    return all[bytes.ConsumeIntegralInRange<std::size_t>(0, N - 1)];
}

EntityName AnyEntity(FuzzedDataProvider& bytes) {
    return static_cast<EntityName>(bytes.ConsumeIntegralInRange(-2, 12));
}

std::vector<double> Numbers(FuzzedDataProvider& bytes) {
    std::vector<double> numbers(bytes.ConsumeIntegralInRange<std::size_t>(1, 20));
    for (double& number : numbers) {
        number = bytes.ConsumeFloatingPoint<double>();
    }
    return numbers;
}

void Construct(GrpState& state, GrpState& other, FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 6)) {
    case 0:
        state = GrpState(Systems[bytes.ConsumeIntegralInRange<std::size_t>(0, 1)]);
        break;
    case 1:
        state = GrpState();
        break;
    case 2:
        if (other.GetValuesPtr() != nullptr || other.GetSystem() == 0) {
            state = other; // a copy of a state that was moved from ends the process
        }
        break;
    case 3:
        state = std::move(other);
        break;
    case 4: {
        GrpState moved(std::move(other));
        other = std::move(moved);
        break;
    }
    case 5:
        std::swap(state, other);
        break;
    default:
        state.SetCmdTypeAndCmd(static_cast<RobotMoveCmdType>(bytes.ConsumeIntegralInRange(0, 3)),
                               bytes.ConsumeRandomLengthString(40));
    }
}

void Change(GrpState& state, const GrpState& other, FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 5)) {
    case 0:
        state.SetValues(Numbers(bytes));
        break;
    case 1:
        state.SetValues(AnyEntity(bytes), Numbers(bytes));
        break;
    case 2:
        state.SetValue(AnyEntity(bytes), bytes.ConsumeIntegral<int>(), 1);
        break;
    case 3:
        state.SetValuesCoupling(AnyEntity(bytes), Numbers(bytes));
        break;
    case 4:
        state.AddOtherValues(Numbers(bytes));
        break;
    default:
        if (other.GetValuesPtr() != nullptr) {
            state.SetValuesByState(other);
        }
    }
}

void Use(GrpState& state, const GrpState& other, FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 5)) {
    case 0:
        state.GetValue(AnyEntity(bytes), static_cast<AxisName>(bytes.ConsumeIntegralInRange(-20, 200)));
        break;
    case 1:
        state.SetLocEuler(bytes.ConsumeIntegralInRange(-1, 3), LocEuler(gp_Pnt(1, 2, 3), gp_Pnt()));
        break;
    case 2:
        state.GetValuesCoupling(AnyEntity(bytes));
        state.GetValuesCoupling();
        break;
    case 3:
        state.FromJson(fuzz::Document(bytes, state.ToJson()));
        break;
    case 4:
        state.AddOtherValues(other);
        state.GetValues();
        state.GetValues(AnyEntity(bytes));
        break;
    default:
        InterpHandle::InterpolationScalePts(state, other, 0.5);
    }
}

void Compare(const GrpState& a, const GrpState& b) {
    a.IsEqual(b, 1);
    a.IsEqualForSimu(b);
    a.IsEqualForCollisonShow(b);
    fuzz::Require((a == b) != (a != b));
}

void UseContext(ContextState& context, ContextState& other, const GrpState& state,
                FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 5)) {
    case 0:
        context = other;
        break;
    case 1:
        context = std::move(other);
        break;
    case 2:
        context = ContextState();
        break;
    case 3:
        if (state.GetValuesPtr() != nullptr) {
            context.SetValues(Systems[0], state);
        }
        break;
    case 4: {
        Json::Value good;
        good["system"] = context.ToJson()["systems"];
        context.FromJson(fuzz::Document(bytes, good));
        break;
    }
    default:
        context.IsEqual(other, 1);
        context.ChangeValues(bytes.ConsumeIntegral<std::uint64_t>());
    }
}

void UseTrace(TracePair& trace, const TracePair& other, const GrpState& state, FuzzedDataProvider& bytes) {
    switch (bytes.ConsumeIntegralInRange(0, 3)) {
    case 0:
        trace = other;
        break;
    case 1:
        trace.setTrace(other.trace);
        break;
    case 2:
        if (state.GetValuesPtr() != nullptr) {
            trace.setTrace({state});
        }
        break;
    default:
        trace.trace = GrpStateUtils::RemoveDuplicatedStates(trace.trace, 1);
    }
    if (trace.trace.size() > 64) {
        trace.trace.resize(1);
    }
}

void Step(Pool& pool, FuzzedDataProvider& bytes) {
    GrpState& state = Pick(pool.states, bytes);
    GrpState& other = Pick(pool.states, bytes);
    switch (bytes.ConsumeIntegralInRange(0, 4)) {
    case 0:
        Construct(state, other, bytes);
        break;
    case 1:
        if (state.GetValuesPtr() != nullptr) {
            Change(state, other, bytes);
        }
        break;
    case 2:
        Compare(state, other);
        Use(state, other, bytes);
        break;
    case 3:
        UseContext(Pick(pool.contexts, bytes), Pick(pool.contexts, bytes), state, bytes);
        break;
    default:
        UseTrace(Pick(pool.traces, bytes), Pick(pool.traces, bytes), state, bytes);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    static const auto& coupled = GrpConfig::ChangeCoupledList(); // outlives what registers in it
    static const Registrar small(Systems[0], {});
    static const Registrar large(Systems[1], {.pedestal = 2, .robots = 2, .benches = {2.0}});
    GrpConfig::GetCoupledValue(Systems[0]).enabled = true;
    GrpConfig::GetCoupledValue(Systems[0]).skip[5] = -1;
    FuzzedDataProvider bytes(data, size);
    Pool pool;
    while (bytes.remaining_bytes() > 0) {
        try {
            Step(pool, bytes);
        } catch (const std::exception&) {
        } catch (const std::string&) {
        }
    }
    return quiet + static_cast<int>(coupled.empty());
}
