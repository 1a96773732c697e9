#include "Harness.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iostream>
#include <json/json.h>
#include <limits>
#include <malloc.h>
#include <map>
#include <memory>

// Google Benchmark times both sides of every row, interleaved and repeated; this program compares results
// first, then puts the medians side by side.

namespace {

using bench::Row;
using bench::Side;
using bench::Work;

constexpr int Repetitions = 9;

bool IsGrowth(const Row& row) { return row.name.ends_with("_growth"); }

std::vector<Row> AllRows() {
    std::vector<Row> rows;
    for (const auto& subject : {bench::KinematicsRows(), bench::InverseKinematicsRows(), bench::SeamRows(),
                                bench::InterpolationRows(), bench::StateRows(), bench::PathRows(),
                                bench::EnvelopeRows(), bench::MeshRows()}) {
        rows.insert(rows.end(), subject.begin(), subject.end());
    }
    // Those that keep memory come last: what they have kept is not given back.
    std::stable_partition(rows.begin(), rows.end(), [](const Row& row) { return !IsGrowth(row); });
    return rows;
}

/// Collects the median of every side, per element.
class Medians : public benchmark::ConsoleReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.aggregate_name == "median") {
                nanoseconds[run.run_name.function_name] = run.GetAdjustedRealTime();
            }
        }
    }
    std::map<std::string, double> nanoseconds;
};

void Register(const std::string& name, const std::function<void()>& call) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [run = call](benchmark::State& state) {
                                     for (auto _ : state) {
                                         run();
                                     }
                                 })
        ->Unit(benchmark::kNanosecond)
        ->UseRealTime()
        ->Repetitions(Repetitions)
        ->ReportAggregatesOnly();
}

/// Runs both sides once and says whether their results agree.
bool Agrees(const Row& row, const Work& work) {
    work.ours.run();
    work.peer.run();
    const std::string difference = work.disagreement();
    if (!difference.empty()) {
        std::cerr << row.name << ": the two sides disagree: " << difference << "\n";
    }
    return difference.empty();
}

Json::Value Result(const Row& row, double ours, double peer) {
    Json::Value json;
    json["name"] = row.name;
    json["ours_ns"] = ours;
    json["peer"] = row.peer;
    json["peer_ns"] = peer;
    json["ratio"] = ours / peer;
    json["goal"] = row.goal;
    return json;
}

void Print(const Json::Value& result) {
    const bool met = result["ratio"].asDouble() <= result["goal"].asDouble();
    std::printf("%-24s %14.1f %14.1f %8.3f %8.3f  %s  %s\n", result["name"].asCString(),
                result["ours_ns"].asDouble(), result["peer_ns"].asDouble(), result["ratio"].asDouble(),
                result["goal"].asDouble(), met ? "met   " : "MISSED", result["peer"].asCString());
}

/// Lets the allocator keep what it once had, or give it back as it does by default. Growth is a matter of our
/// code: a million states would otherwise wait for the kernel to hand out and clear the pages that the run
/// before gave back, and a thousand would not.
void KeepMemory(bool keep) {
    constexpr int DefaultMaps = 65536;
    constexpr int DefaultTrim = 128 * 1024;
    mallopt(M_MMAP_MAX, keep ? 0 : DefaultMaps);
    mallopt(M_TRIM_THRESHOLD, keep ? std::numeric_limits<int>::max() : DefaultTrim);
}

int Compare(const std::vector<Row>& rows, const std::string& file) {
    Json::Value results(Json::arrayValue);
    std::printf("%-24s %14s %14s %8s %8s\n", "row (ns an element)", "ours", "peer", "ratio", "goal");
    for (const Row& row : rows) {
        KeepMemory(IsGrowth(row));
        const Work work = row.prepare(false);
        if (!Agrees(row, work)) {
            return 1;
        }
        Register("ours", work.ours.run);
        Register("peer", work.peer.run);
        if (work.ours.besides) {
            Register("besides", work.ours.besides);
        }
        Medians medians;
        benchmark::RunSpecifiedBenchmarks(&medians);
        // One row at a time, so that the inputs of one neither crowd the caches of another nor outlive it.
        benchmark::ClearRegisteredBenchmarks();
        results.append(
            Result(row, (medians.nanoseconds["ours"] - medians.nanoseconds["besides"]) / work.ours.elements,
                   medians.nanoseconds["peer"] / work.peer.elements));
        Print(results[results.size() - 1]);
    }
    std::ofstream(file) << results.toStyledString();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const bool quick =
        std::any_of(argv, argv + argc, [](const char* a) { return std::strcmp(a, "--quick") == 0; });
    const char* only = argc > 2 && std::strcmp(argv[1], "--row") == 0 ? argv[2] : nullptr;
    std::vector<Row> rows = AllRows();
    if (only != nullptr) {
        std::erase_if(rows, [&](const Row& row) { return row.name != only; });
    }
    if (quick) {
        bool agree = true;
        for (const Row& row : rows) {
            agree = Agrees(row, row.prepare(true)) && agree;
            std::cout << row.name << ": compared\n";
        }
        return agree ? 0 : 1;
    }
    std::vector<std::string> options = {argv[0], "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> pointers;
    for (std::string& option : options) {
        pointers.push_back(option.data());
    }
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    return Compare(rows, only != nullptr ? "" : "out/bench.json");
}
