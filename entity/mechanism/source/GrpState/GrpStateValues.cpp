#include <mechanism/GrpState.h>

#include "BoundedCopy.h"
#include <algorithm>
#include <functional>
#include <utility>

using mechanism_detail::CopyBounded;

namespace {

constexpr int FirstBench = Bench;
constexpr int AxesPerFamily = 10;

struct Range {
    std::size_t start = 0;
    std::size_t count = 0;
};

/// An entity's range, cut to the buffer: benches of different sizes are laid out past its end.
Range RangeOf(const GrpConfig& config, EntityName entity) {
    int start = 0;
    int count = 0;
    config.GetIndex(entity, start, count);
    start = std::clamp(start, 0, config.contextDof);
    count = std::clamp(count, 0, config.contextDof - start);
    return {static_cast<std::size_t>(start), static_cast<std::size_t>(count)};
}

const double* SourceOf(const std::vector<double>& v) { return v.empty() ? nullptr : v.data(); }

} // namespace

std::vector<double> GrpState::GetValues() { return {values, values + config->contextDof}; }

void GrpState::SetValues(const std::vector<double>& v) {
    const auto count = static_cast<std::size_t>(config->contextDof);
    CopyBounded(values, count, SourceOf(v), count);
}

void GrpState::SetValuesPtr(double* const p) {
    const auto count = static_cast<std::size_t>(config->contextDof);
    CopyBounded(values, count, p, count);
}

void GrpState::SetValuesByState(const GrpState& other) { SetValuesPtr(other.values); }

void GrpState::AddOtherValues(const GrpState& other) {
    if (other.config->contextDof == config->contextDof) {
        std::transform(values, values + config->contextDof, other.values, values, std::plus<>());
    }
}

void GrpState::AddOtherValues(const std::vector<double>& v) {
    if (std::cmp_equal(v.size(), config->contextDof)) {
        std::transform(values, values + config->contextDof, values,
                       [](double value) { return value + value; });
    }
}

std::vector<double> GrpState::GetValues(EntityName entity) {
    const auto [start, count] = RangeOf(*config, entity);
    return {values + start, values + start + count};
}

void GrpState::SetValues(EntityName entity, const std::vector<double>& v) {
    if (!v.empty()) {
        const auto [start, count] = RangeOf(*config, entity);
        CopyBounded(values + start, count, v.data(), count);
    }
}

void GrpState::SetValues(EntityName entity, const double* p, std::size_t n) {
    const auto [start, count] = RangeOf(*config, entity);
    CopyBounded(values + start, count, p, n);
}

double GrpState::GetValue(EntityName entity, AxisName axis) const {
    int start = 0;
    int count = 0;
    config->GetIndex(entity, start, count);
    return values[start + axis % AxesPerFamily];
}

void GrpState::SetValue(EntityName entity, int axis, double value) {
    if (entity < config->robotNum) {
        values[entity * config->robotDof + axis] = value;
    } else if (entity < FirstBench) {
        values[config->robotNum * config->robotDof + axis] = value;
    }
}
