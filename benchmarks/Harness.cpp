#include "Harness.h"

#include <benchmark/benchmark.h>
#include <cmath>

std::string bench::Difference(const std::vector<double>& ours, const std::vector<double>& peer,
                              double tolerance) {
    if (ours.size() != peer.size()) {
        return std::to_string(ours.size()) + " numbers against " + std::to_string(peer.size());
    }
    for (std::size_t i = 0; i < ours.size(); ++i) {
        if (!(std::abs(ours[i] - peer[i]) <= tolerance)) {
            return "number " + std::to_string(i) + ": " + std::to_string(ours[i]) + " against " +
                   std::to_string(peer[i]);
        }
    }
    return {};
}

void bench::Keep(double value) { benchmark::DoNotOptimize(value); }
