#include <mechanism/GrpState.h>

#include "StateAccess.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double IdentityTolerance = 1e-7;
constexpr double MotionTolerance = 0.0001;
constexpr double SimulationPedestalTolerance = 0.1;
constexpr double CollisionPedestalTolerance = 1.0;
/// A tenth of a degree in radians.
constexpr double AngularStep = 0.0017453292519943296;

bool AreWithin(const double* a, const double* b, int first, int last, double tolerance) {
    for (int i = first; i < last; ++i) {
        if (std::abs(b[i] - a[i]) > tolerance) {
            return false;
        }
    }
    return true;
}

/// Whether b has at least as many values as a.
bool HasCounterparts(const GrpState& a, const GrpState& b) {
    using mechanism_detail::StateAccess;
    return StateAccess::HasValues(a, 0) && StateAccess::HasValues(b, StateAccess::CountValues(a));
}

} // namespace

bool GrpState::IsEqual(const std::vector<double>& a, const std::vector<double>& b, double tolerance) {
    return a.size() == b.size() && AreWithin(a.data(), b.data(), 0, static_cast<int>(a.size()), tolerance);
}

bool GrpState::IsEqual(const GrpState& other, double tolerance) const {
    return HasCounterparts(*this, other) && AreWithin(values, other.values, 0, CountValues(), tolerance);
}

bool GrpState::IsEqualForSimu(const GrpState& other) const {
    return IsWithin(other, SimulationPedestalTolerance);
}

bool GrpState::IsEqualForCollisonShow(const GrpState& other) const {
    return IsWithin(other, CollisionPedestalTolerance);
}

bool GrpState::IsWithin(const GrpState& other, double pedestalTolerance) const {
    if (system != other.system || !HasCounterparts(*this, other)) {
        return false;
    }
    const int all = CountValues();
    const int pedestal = std::clamp(config->robotNum * config->robotDof, 0, all);
    const int benches = std::clamp(pedestal + config->pedestalDof, pedestal, all);
    return AreWithin(values, other.values, 0, pedestal, MotionTolerance) &&
           AreWithin(values, other.values, pedestal, benches, pedestalTolerance) &&
           AreWithin(values, other.values, benches, all, MotionTolerance);
}

std::vector<double> GrpState::GetScaleValues(double step) {
    std::vector<double> scale(static_cast<std::size_t>(config->contextDof), step * AngularStep);
    const int first = std::clamp(config->robotDof, 0, config->contextDof);
    const int last = std::clamp(config->GetRobotAndPedestalDof(), first, config->contextDof);
    std::fill(scale.begin() + first, scale.begin() + last, step);
    return scale;
}

bool operator==(const GrpState& a, const GrpState& b) {
    if (a.GetSystem() != b.GetSystem() || !HasCounterparts(a, b) ||
        !AreWithin(a.GetValuesPtr(), b.GetValuesPtr(), 0, mechanism_detail::StateAccess::CountValues(a),
                   IdentityTolerance)) {
        return false;
    }
    for (int robot = 0; robot < a.GetRobotNum(); ++robot) {
        if (!(a.GetLocEuler(robot) == b.GetLocEuler(robot))) {
            return false;
        }
    }
    return true;
}

bool operator!=(const GrpState& a, const GrpState& b) { return !(a == b); }
