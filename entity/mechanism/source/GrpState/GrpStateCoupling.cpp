#include <mechanism/GrpState.h>

#include "BoundedCopy.h"
#include "Checked.h"

#include <algorithm>
#include <cstdint>

namespace {

/// The values at the coupling's independent positions, up to the first one that is not below the bound.
std::vector<double> Independent(const double* values, const CoupedValue& coupling, int bound) {
    std::vector<double> independent;
    independent.reserve(static_cast<std::size_t>(std::max(bound, 0)));
    for (const std::int32_t position : coupling.index) {
        if (position >= bound) {
            break;
        }
        if (position < 0) {
            mechanism_detail::RefuseSubscript();
        }
        independent.push_back(values[position]);
    }
    return independent;
}

/// Sets the first positions from their sources; positions past the coupling's capacity keep their values.
void Spread(const std::vector<double>& independent, const CoupedValue& coupling, int bound, double* values) {
    std::int64_t source = -1;
    for (int i = 0; i < std::min(bound, CoupedValue::Capacity); ++i) {
        source += 1LL + coupling.skip[i];
        values[i] = mechanism_detail::At(independent, source) * coupling.ratio[i];
    }
}

/// The default count of a record is six, which a shorter system does not have.
int RobotBound(const CoupedValue& coupling, int values) { return std::min(coupling.robotValueCount, values); }

} // namespace

std::vector<double> GrpState::GetValuesCoupling() {
    const CoupedValue& coupling = GrpConfig::GetCoupledValue(system);
    return coupling.enabled ? Independent(values, coupling, CountValues()) : GetValues();
}

std::vector<double> GrpState::GetValuesCoupling(EntityName entity) {
    if (entity != Robot) {
        return GetValues(entity);
    }
    const CoupedValue& coupling = GrpConfig::GetCoupledValue(system);
    return coupling.enabled ? Independent(values, coupling, RobotBound(coupling, CountValues()))
                            : GetValues(entity);
}

void GrpState::SetValuesCoupling(const std::vector<double>& v) {
    // There may be fewer independent values than positions.
    const auto most = static_cast<std::size_t>(CountRoom());
    const bool isEmpty = v.empty();
    mechanism_detail::CopyBounded(values, most, isEmpty ? nullptr : v.data(),
                                  isEmpty ? most : std::min(most, v.size()));
    const CoupedValue& coupling = GrpConfig::GetCoupledValue(system);
    if (coupling.enabled) {
        Spread(v, coupling, CountValues(), values);
    }
}

void GrpState::SetValuesCoupling(EntityName entity, const std::vector<double>& v) {
    if (v.empty()) {
        return;
    }
    if (entity == Robot) {
        const CoupedValue& coupling = GrpConfig::GetCoupledValue(system);
        if (coupling.enabled) {
            Spread(v, coupling, RobotBound(coupling, CountValues()), values);
            return;
        }
    }
    SetValues(entity, v);
}
