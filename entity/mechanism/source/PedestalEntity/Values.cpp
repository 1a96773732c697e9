#include "Checked.h"
#include "Failure.h"

#include <algorithm>
#include <mechanism/PedestalEntity.h>
#include <stdexcept>

using namespace mechanism_detail;

namespace {

// Hosts recognise these failures by the line in their log record, so the line numbers are fixed.
constexpr int UnknownRunLine = 28;
constexpr int UnknownValuesLine = 166;
constexpr int InvertedLimitLine = 227;

constexpr const char* UnknownSystem = "map传入key错误，数据不在范围内";

} // namespace

// --- systems -----------------------------------------------------------------------------------------------

ArrData PedestalEntity::RunOf(size_t system) const {
    const auto found = currentValueData.find(system);
    if (found == currentValueData.end()) {
        Fail(family::PedestalEntity, UnknownRunLine, "PedestalEntity::GetCurrentValueData", UnknownSystem);
    }
    return found->second;
}

ArrData PedestalEntity::GetCurrentValueData(size_t system) { return RunOf(system); }

size_t PedestalEntity::GetSystem(LinkRod* link) const {
    if (link == nullptr) {
        throw std::invalid_argument(GetName() + ": null link, expected one of the pedestal");
    }
    const std::uint64_t position = GetLinkIndexOrder(link->linkHash);
    const auto holds = [&](const auto& entry) {
        return entry.second.start <= position && position < entry.second.start + entry.second.count;
    };
    const auto found = std::find_if(currentValueData.begin(), currentValueData.end(), holds);
    return found != currentValueData.end() ? found->first : 0;
}

int PedestalEntity::GetDOF(size_t system) const {
    return system == 0 ? GetLinkSize() : static_cast<int>(GetCurrentValue(system).size());
}

// --- values ------------------------------------------------------------------------------------------------

const std::vector<double>& PedestalEntity::GetCurrentValue(size_t system) const {
    if (system == 0 || currentValues.empty()) {
        return GenericEntityConfig::GetCurrentValue(system);
    }
    const auto found = currentValues.find(system);
    if (found == currentValues.end()) {
        Fail(family::PedestalEntity, UnknownValuesLine, "PedestalEntity::GetCurrentValue", UnknownSystem);
    }
    return found->second;
}

void PedestalEntity::SetCurrentValue(const std::vector<double>& values, size_t system) {
    if (values.empty()) {
        return;
    }
    if (system == 0 || currentValues.empty()) {
        GenericEntityConfig::SetCurrentValue(values, system);
        return;
    }
    auto& own = const_cast<std::vector<double>&>(GetCurrentValue(system));
    const auto [start, count] = At(currentValueData, system);
    if (values.size() < count) {
        throw std::invalid_argument(GetName() + ": " + std::to_string(values.size()) + " values for system " +
                                    std::to_string(system) + ", expected " + std::to_string(count));
    }
    for (std::size_t i = 0; i < count; ++i) {
        GenericEntity::currentValues[start + i] = own[i] = values[i];
    }
}

// --- limits ------------------------------------------------------------------------------------------------

std::vector<std::pair<double, double>> PedestalEntity::GetLimit(size_t system, double tolerance) {
    if (system == 0 || currentValues.empty()) {
        return GenericEntityConfig::GetLimit(system, tolerance);
    }
    GetCurrentValue(system); // fails for an unknown system, with that function's text
    const auto [start, count] = At(currentValueData, system);
    std::vector<std::pair<double, double>> limits;
    limits.reserve(count);
    for (std::size_t i = start; i < start + count; ++i) {
        const auto& [low, high] = GetLink(i)->GetLimit();
        if (!(low + tolerance <= high - tolerance)) {
            Fail(family::PedestalEntity, InvertedLimitLine, "PedestalEntity::GetLimit", "限位错误");
        }
        limits.emplace_back(low + tolerance, high - tolerance);
    }
    return limits;
}

bool PedestalEntity::IsInLimit(const std::vector<double>& values, size_t system, double tolerance) const {
    if (system == 0) {
        return GenericEntityConfig::IsInLimit(values, 0, tolerance);
    }
    if (values.empty()) {
        return true;
    }
    const auto [start, count] = RunOf(system);
    for (std::size_t i = 0; i < count; ++i) {
        const LinkRod* link = GetLink(start + i);
        if (link != nullptr && !link->IsInLimit(At(values, i), tolerance)) {
            return false;
        }
    }
    return true;
}
