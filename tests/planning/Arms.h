#pragma once

#include <cell/Cell.h>
#include <gmock/gmock.h>
#include <mechanism/RobotEntity.h>
#include <planning/InverseKinematics.h>
#include <random>
#include <string>
#include <support/Draws.h>

/// Arms of the examples, and random values within their limits.
namespace arms {

inline constexpr const char* All[] = {"abb_irb2400_10", "kuka_kr16_2", "motoman_ma2010",
                                      "staubli_tx90",   "ur_ur10e",    "abb_irb5400_paint"};

inline cell::Cell Load(const std::string& name) {
    return cell::Cell::Load(std::string(EXAMPLES_DIR) + "/arms/" + name + ".json");
}

inline std::vector<double> RandomValues(const planning::InverseKinematics& solver, std::mt19937& random) {
    std::vector<double> values;
    for (std::size_t i = 0; i < solver.Joints(); ++i) {
        const auto& [low, high] = solver.Limit(i);
        values.push_back(std::uniform_real_distribution<double>(low, high)(random));
    }
    if (solver.Coupled()) {
        values[5] = -values[4];
    }
    return values;
}

struct Miss {
    double length = 0; ///< mm
    double matrix = 0; ///< largest difference of an entry
};

inline Miss Between(const Rigid& a, const Rigid& b) {
    Miss miss;
    for (int i = 0; i < 9; ++i) {
        miss.matrix = std::max(miss.matrix, std::abs(a.r[i] - b.r[i]));
    }
    miss.length = std::hypot(a.p[0] - b.p[0], a.p[1] - b.p[1], a.p[2] - b.p[2]);
    return miss;
}

} // namespace arms
