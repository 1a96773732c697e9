#include <mechanism/GrpState.h>

#include "BoundedCopy.h"
#include "Checked.h"
#include "StateAccess.h"
#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>

using mechanism_detail::CopyBounded;
using mechanism_detail::StateAccess;

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

/// A vector that is too short gives the values that it has; none at all is for the copy to judge.
std::size_t CountFrom(const std::vector<double>& v, std::size_t room) {
    return v.empty() ? room : std::min(v.size(), room);
}

/// A place in the buffer, which an axis may leave its entity for but not the state.
std::size_t PlaceOf(const GrpConfig& config, std::int64_t start, std::int64_t axis) {
    const std::int64_t place = start + axis;
    if (place < 0 || place >= config.contextDof) {
        mechanism_detail::RefuseSubscript();
    }
    return static_cast<std::size_t>(place);
}

} // namespace

std::vector<double> GrpState::GetValues() { return {values, values + config->contextDof}; }

void GrpState::SetValues(const std::vector<double>& v) {
    const auto room = static_cast<std::size_t>(config->contextDof);
    CopyBounded(values, room, SourceOf(v), CountFrom(v, room));
}

void GrpState::SetValuesPtr(double* const p) {
    const auto count = static_cast<std::size_t>(config->contextDof);
    CopyBounded(values, count, p, count);
}

void GrpState::SetValuesByState(const GrpState& other) {
    const auto room = static_cast<std::size_t>(config->contextDof);
    const bool isThere = StateAccess::HasValues(other, 0);
    CopyBounded(values, room, other.values,
                isThere ? static_cast<std::size_t>(std::min(config->contextDof, other.config->contextDof))
                        : room);
}

void GrpState::AddOtherValues(const GrpState& other) {
    if (StateAccess::HasValues(other, 0) && other.config->contextDof == config->contextDof) {
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
        CopyBounded(values + start, count, v.data(), CountFrom(v, count));
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
    return values[PlaceOf(*config, start, axis % AxesPerFamily)];
}

void GrpState::SetValue(EntityName entity, int axis, double value) {
    if (entity < config->robotNum) {
        values[PlaceOf(*config, static_cast<std::int64_t>(entity) * config->robotDof, axis)] = value;
    } else if (entity < FirstBench) {
        values[PlaceOf(*config, static_cast<std::int64_t>(config->robotNum) * config->robotDof, axis)] =
            value;
    }
}
