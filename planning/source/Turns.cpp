#include <cmath>
#include <numbers>
#include <planning/InverseKinematics.h>

namespace planning {

namespace {

constexpr double Turn = 2 * std::numbers::pi;
constexpr std::size_t Leader = 4;
constexpr std::size_t Follower = 5;

} // namespace

TurnCounter::TurnCounter(const InverseKinematics& solver_, const Solution& start)
    : solver(solver_), current(start) {
    for (std::size_t i = 0; i < solver.Joints(); ++i) {
        ToLowest(i);
    }
}

void TurnCounter::ToLowest(std::size_t joint) {
    if (solver.Coupled() && joint == Follower) {
        current.values[Follower] = -current.values[Leader];
        return;
    }
    double& value = current.values[joint];
    value -= Turn * std::floor((value - solver.Limit(joint).first) / Turn);
}

bool TurnCounter::Next() {
    for (std::size_t i = 0; i < solver.Joints(); ++i) {
        if (solver.Coupled() && i == Follower) {
            continue;
        }
        const bool more = current.values[i] + Turn <= solver.Limit(i).second;
        if (more) {
            current.values[i] += Turn;
        } else {
            ToLowest(i);
        }
        if (solver.Coupled() && i == Leader) {
            current.values[Follower] = -current.values[Leader];
        }
        if (more) {
            return true;
        }
    }
    return false;
}

} // namespace planning
