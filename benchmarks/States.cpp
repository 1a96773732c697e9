#include "Harness.h"

#include <algorithm>
#include <cstring>
#include <json/json.h>
#include <mechanism/GrpStateUtils.h>
#include <memory>
#include <numeric>
#include <random>
#include <sstream>
#include <support/Registrar.h>

namespace {

using bench::Row;
using bench::Work;

constexpr std::uint64_t System = 6002;
constexpr std::size_t Values = 7;

// States point at their system's registration, so it outlives all of them.
void RegisterOnce() {
    static const Registrar system{System, {.pedestal = 1, .joints = 6, .robots = 1, .benches = {}}};
}

struct Path {
    std::vector<GrpState> states;
    std::vector<double> ours;
    std::vector<double> peer;

    /// @param repeats how many states in a row have the same values
    Path(std::size_t count, std::size_t repeats) {
        RegisterOnce();
        std::mt19937 random(7);
        std::uniform_real_distribution<double> value(-3, 3);
        states.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            if (i % repeats == 0) {
                GrpState state(System);
                for (std::size_t k = 0; k < Values; ++k) {
                    state.GetValuesPtr()[k] = value(random);
                }
                states.push_back(state);
            } else {
                states.push_back(GrpState(states.back()));
            }
        }
    }
};

std::vector<double> Firsts(const std::vector<GrpState>& states) {
    std::vector<double> numbers;
    numbers.reserve(states.size());
    for (const GrpState& state : states) {
        numbers.push_back(state.GetValuesPtr()[0]);
    }
    return numbers;
}

Work ThroughText(bool quick) {
    const std::size_t count = quick ? 100 : 10000;
    auto path = std::make_shared<Path>(count, 1);
    auto documents = std::make_shared<std::vector<Json::Value>>();
    for (GrpState& state : path->states) {
        documents->push_back(state.ToJson());
    }
    const auto throughText = [](const Json::Value& json) {
        Json::StreamWriterBuilder writer;
        writer["indentation"] = "";
        const std::string text = Json::writeString(writer, json);
        Json::Value read;
        const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
        reader->parse(text.data(), text.data() + text.size(), &read, nullptr);
        return read;
    };
    const auto runOurs = [path, throughText] {
        path->ours.clear();
        GrpState read(System);
        for (GrpState& state : path->states) {
            read.FromJson(throughText(state.ToJson()));
            path->ours.push_back(read.GetValuesPtr()[3]);
        }
    };
    const auto runPeer = [path, documents, throughText] {
        path->peer.clear();
        for (const Json::Value& document : *documents) {
            path->peer.push_back(throughText(document)["J_value"][3].asDouble());
        }
    };
    return {{runOurs, static_cast<double>(count)}, {runPeer, static_cast<double>(count)}, [path] {
                return bench::Difference(path->ours, path->peer, 0);
            }};
}

/// What copying a state costs the allocator and the memory: two blocks, and the record itself.
struct Raw {
    unsigned char record[sizeof(GrpState)];
    std::unique_ptr<double[]> values;
    std::unique_ptr<LocEuler[]> poses;
};

Work Copy(bool quick) {
    const std::size_t count = quick ? 1000 : 100000;
    auto path = std::make_shared<Path>(count, 1);
    const auto runPeer = [path, count] {
        std::vector<Raw> copies(count);
        for (std::size_t i = 0; i < count; ++i) {
            const GrpState& state = path->states[i];
            std::memcpy(copies[i].record, static_cast<const void*>(&state), sizeof(GrpState));
            copies[i].values = std::make_unique_for_overwrite<double[]>(Values);
            std::memcpy(copies[i].values.get(), state.GetValuesPtr(), Values * sizeof(double));
            copies[i].poses = std::make_unique<LocEuler[]>(1);
            std::memcpy(static_cast<void*>(copies[i].poses.get()), &state.GetLocEuler(0), sizeof(LocEuler));
        }
        path->peer = {copies[count / 2].values[2], static_cast<double>(copies.size())};
    };
    const auto runOurs = [path, count] {
        const std::vector<GrpState> copies = path->states;
        path->ours = {copies[count / 2].GetValuesPtr()[2], static_cast<double>(copies.size())};
    };
    return {{runOurs, static_cast<double>(count)}, {runPeer, static_cast<double>(count)}, [path] {
                return bench::Difference(path->ours, path->peer, 0);
            }};
}

Work Thin(std::size_t count) {
    auto path = std::make_shared<Path>(count, 2);
    const auto runOurs = [path] {
        const auto kept = GrpStateUtils::RemoveDuplicatedStates(path->states, 1e-6);
        path->ours = {static_cast<double>(kept.size()), kept[kept.size() / 2].GetValuesPtr()[0]};
    };
    const auto runPeer = [path] {
        std::vector<GrpState> kept;
        kept.reserve(path->states.size() / 2);
        for (std::size_t i = 0; i < path->states.size(); i += 2) {
            kept.push_back(path->states[i]);
        }
        path->peer = {static_cast<double>(kept.size()), kept[kept.size() / 2].GetValuesPtr()[0]};
    };
    return {{runOurs, static_cast<double>(count)}, {runPeer, static_cast<double>(count)}, [path] {
                return bench::Difference(path->ours, path->peer, 0);
            }};
}

Work ThinGrowth(bool quick) {
    const Work large = Thin(quick ? 10000 : 1000000);
    const Work small = Thin(quick ? 1000 : 10000);
    return {large.ours, small.ours, [] { return std::string(); }};
}

// Sorting changes its input, so both sides start from a copy of the candidates; the copy is part of both
// times.
Work Sort(bool quick) {
    const std::size_t count = quick ? 1000 : 100000;
    auto path = std::make_shared<Path>(count, 1);
    auto reference = std::make_shared<GrpState>(System);
    const auto runOurs = [path, reference] {
        std::vector<GrpState> states = path->states;
        GrpStateUtils::SortRobotStateJ(*reference, states, 6);
        path->ours = Firsts(states);
    };
    const auto runPeer = [path, reference] {
        const std::vector<GrpState> states = path->states;
        std::vector<double> keys(states.size());
        for (std::size_t i = 0; i < states.size(); ++i) {
            const double* const v = states[i].GetValuesPtr();
            keys[i] = std::inner_product(v, v + 6, v, 0.0);
        }
        std::vector<std::size_t> order(states.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::sort(order.begin(), order.end(),
                  [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
        std::vector<GrpState> sorted;
        sorted.reserve(states.size());
        for (const std::size_t i : order) {
            sorted.push_back(states[i]);
        }
        path->peer = Firsts(sorted);
    };
    return {{runOurs, static_cast<double>(count)}, {runPeer, static_cast<double>(count)}, [path] {
                return bench::Difference(path->ours, path->peer, 0);
            }};
}

} // namespace

std::vector<Row> bench::StateRows() {
    return {{"state_json", "jsoncpp alone on equal documents", 1.1, ThroughText},
            {"copy_states", "memcpy with the same allocations", 1.2, Copy},
            {"thin_states", "copying the kept states", 1.3,
             [](bool quick) { return Thin(quick ? 1000 : 1000000); }},
            {"thin_states_growth", "itself at 1e4 states, ours at 1e6", 1.5, ThinGrowth},
            {"sort_states", "std::sort of indices by keys, one permutation", 3, Sort}};
}
