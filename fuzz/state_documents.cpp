#include <fuzz/Documents.h>
#include <fuzz/Quiet.h>
#include <mechanism/mechanism.h>
#include <support/Registrar.h>

// Documents of states and contexts. What was read is written and read again without a change, and what was
// refused leaves a state that can still be used.

namespace {

constexpr std::uint64_t Small = 5;
constexpr std::uint64_t Large = 9;

void LoadState(FuzzedDataProvider& bytes) {
    GrpState state(bytes.ConsumeBool() ? Small : Large);
    const std::uint64_t system = state.GetSystem();
    const Json::Value json = fuzz::Document(bytes, state.ToJson());
    try {
        // A state that takes over another system keeps its own buffer and poses.
        if (state.FromJson(json) && state.GetSystem() == system) {
            const Json::Value written = state.ToJson();
            GrpState again(state.GetSystem());
            again.FromJson(written);
            fuzz::Require(fuzz::ToText(again.ToJson()) == fuzz::ToText(written));
        }
    } catch (const std::exception&) {
    }
    const GrpState copy(state);
    copy.IsEqualForSimu(state);
    state.GetValues(Pedestal);
}

void LoadContext(FuzzedDataProvider& bytes) {
    ContextState context;
    Json::Value good;
    good["system"] = context.ToJson()["systems"];
    const Json::Value json = fuzz::Document(bytes, good);
    try {
        context.FromJson(json);
    } catch (const std::exception&) {
    } catch (const std::string&) {
    }
    context.ToJson();
    fuzz::Require(context.IsEqual(ContextState(context), 0));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int quiet = Silence();
    static const Registrar small(Small, {});
    static const Registrar large(Large, {.pedestal = 2, .robots = 2, .benches = {2.0}});
    FuzzedDataProvider bytes(data, size);
    if (bytes.ConsumeBool()) {
        LoadState(bytes);
    } else {
        LoadContext(bytes);
    }
    return quiet;
}
