#include <mechanism/GrpState.h>

#include "BoundedCopy.h"
#include "Checked.h"

#include <algorithm>
#include <cstdint>
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

/// An entity's range within the buffer: benches of different sizes are laid out past its end.
Range RangeOf(const GrpConfig& config, EntityName entity, int room) {
    int start = 0;
    int count = 0;
    config.GetIndex(entity, start, count);
    start = std::clamp(start, 0, room);
    count = std::clamp(count, 0, room - start);
    return {static_cast<std::size_t>(start), static_cast<std::size_t>(count)};
}

/// Whether the entity is a bench that the layout does not have.
bool IsUnknownBench(const GrpConfig& config, EntityName entity) {
    return entity >= config.robotNum && entity >= FirstBench && entity - FirstBench >= config.benchNum;
}

const double* SourceOf(const std::vector<double>& v) { return v.empty() ? nullptr : v.data(); }

/// A vector that is too short sets the values that it has; an empty one is left to BoundedCopy, which aborts.
std::size_t CountFrom(const std::vector<double>& v, std::size_t room) {
    return v.empty() ? room : std::min(v.size(), room);
}

/// Start of a range in a buffer, or null without a buffer.
double* Begin(double* values, std::size_t start) { return values != nullptr ? values + start : nullptr; }

/// A position in the buffer; an axis may lie outside its entity, but not outside the state.
std::size_t PlaceOf(std::int64_t start, std::int64_t axis, int values) {
    const std::int64_t place = start + axis;
    if (place < 0 || place >= values) {
        mechanism_detail::RefuseSubscript();
    }
    return static_cast<std::size_t>(place);
}

} // namespace

std::vector<double> GrpState::GetValues() { return {values, values + CountValues()}; }

void GrpState::SetValues(const std::vector<double>& v) {
    const auto most = static_cast<std::size_t>(CountRoom());
    CopyBounded(values, most, SourceOf(v), CountFrom(v, most));
}

void GrpState::SetValuesPtr(double* const p) {
    const auto count = static_cast<std::size_t>(CountRoom());
    CopyBounded(values, count, p, count);
}

void GrpState::SetValuesByState(const GrpState& other) {
    const int most = CountRoom();
    const int count = other.values != nullptr ? std::min(most, other.CountValues()) : most;
    CopyBounded(values, static_cast<std::size_t>(most), other.values, static_cast<std::size_t>(count));
}

void GrpState::AddOtherValues(const GrpState& other) {
    if (other.CountValues() == CountValues()) {
        std::transform(values, values + CountValues(), other.values, values, std::plus<>());
    }
}

void GrpState::AddOtherValues(const std::vector<double>& v) {
    if (std::cmp_equal(v.size(), config->contextDof)) {
        std::transform(values, values + CountValues(), values, [](double value) { return value + value; });
    }
}

std::vector<double> GrpState::GetValues(EntityName entity) {
    const auto [start, count] = RangeOf(*config, entity, CountValues());
    return {values + start, values + start + count};
}

void GrpState::SetValues(EntityName entity, const std::vector<double>& v) {
    if (!v.empty()) {
        const auto [start, count] = RangeOf(*config, entity, CountRoom());
        CopyBounded(Begin(values, start), count, v.data(), CountFrom(v, count));
    }
}

void GrpState::SetValues(EntityName entity, const double* p, std::size_t n) {
    if (IsUnknownBench(*config, entity)) {
        return;
    }
    const auto [start, count] = RangeOf(*config, entity, CountRoom());
    CopyBounded(Begin(values, start), count, p, n);
}

double GrpState::GetValue(EntityName entity, AxisName axis) const {
    int start = 0;
    int count = 0;
    config->GetIndex(entity, start, count);
    return values[PlaceOf(start, axis % AxesPerFamily, CountValues())];
}

void GrpState::SetValue(EntityName entity, int axis, double value) {
    if (entity < config->robotNum || entity < FirstBench) {
        const std::int64_t robots = std::min<std::int64_t>(entity, config->robotNum);
        values[PlaceOf(robots * config->robotDof, axis, CountValues())] = value;
    }
}
