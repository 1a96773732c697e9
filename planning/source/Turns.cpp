#include <cmath>
#include <host/tools/ArmFacts.h>
#include <numbers>
#include <planning/InverseKinematics.h>

namespace planning {

namespace {

constexpr double Turn = 2 * std::numbers::pi;
using ArmFacts::WristFollower;
using ArmFacts::WristLeader;

} // namespace

TurnCounter::TurnCounter(const InverseKinematics& solver_, const Solution& start)
    : solver(solver_), current(start) {
    for (std::size_t i = 0; i < solver.Joints(); ++i) {
        ToLowest(i);
    }
}

void TurnCounter::ToLowest(std::size_t joint) {
    if (solver.Coupled() && joint == WristFollower) {
        current.values[WristFollower] = -current.values[WristLeader];
        return;
    }
    double& value = current.values[joint];
    value -= Turn * std::floor((value - solver.Limit(joint).first) / Turn);
}

bool TurnCounter::Next() {
    for (std::size_t i = 0; i < solver.Joints(); ++i) {
        if (solver.Coupled() && i == WristFollower) {
            continue;
        }
        const bool more = current.values[i] + Turn <= solver.Limit(i).second;
        if (more) {
            current.values[i] += Turn;
        } else {
            ToLowest(i);
        }
        if (solver.Coupled() && i == WristLeader) {
            current.values[WristFollower] = -current.values[WristLeader];
        }
        if (more) {
            return true;
        }
    }
    return false;
}

} // namespace planning
