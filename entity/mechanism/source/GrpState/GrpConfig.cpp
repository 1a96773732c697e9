#include <mechanism/GrpConfig.h>

#include "Checked.h"
#include "Failure.h"
#include "Whole.h"

#include <algorithm>
#include <iterator>
#include <utility>

using mechanism_detail::Whole;

namespace {

/// An index that is no position of a vector; it ends the list of independent positions.
constexpr std::int32_t EndOfIndices = 100000;
constexpr int FirstBench = Bench;

/// A null entry counts as not registered.
const std::shared_ptr<GrpConfig>& Find(std::uint64_t system, int line, const char* function) {
    const auto& list = GrpConfig::GetGrpConfigList();
    const auto found = list.find(system);
    if (found == list.end() || found->second == nullptr) {
        mechanism_detail::Fail(mechanism_detail::family::GrpState, line, function,
                               "当前系统不存在该型号机器人");
    }
    return found->second;
}

/// @throws std::invalid_argument naming a count that is not in 0 .. MostValues.
std::int32_t RequireCount(double count, const char* name) {
    if (!(count >= 0 && count <= GrpConfig::MostValues)) {
        throw std::invalid_argument(
            mechanism_detail::format("{}: {}, expected 0 to {}", name, count, GrpConfig::MostValues));
    }
    return static_cast<std::int32_t>(count);
}

} // namespace

CoupedValue::CoupedValue() {
    std::fill(std::begin(ratio), std::end(ratio), 1.0);
    std::fill(std::begin(index), std::end(index), EndOfIndices);
}

void GrpConfig::InitDOF(int pedestalDof_, int robotDof_, int robotNum_, int benchNum_) {
    for (const auto& [name, count] :
         {std::pair("pedestalDof", pedestalDof_), std::pair("robotDof", robotDof_),
          std::pair("robotNum", robotNum_), std::pair("benchNum", benchNum_)}) {
        RequireCount(count, name);
    }
    contextDof = RequireCount(static_cast<double>(robotDof_) * robotNum_ + pedestalDof_, "contextDof");
    pedestalDof = pedestalDof_;
    robotDof = robotDof_;
    robotNum = robotNum_;
    benchNum = benchNum_;
}

void GrpConfig::SetBenchesDofs(const std::vector<double>& dofs) {
    std::int32_t total = contextDof;
    for (const double dof : dofs) {
        RequireCount(dof, "bench axes");
        total = RequireCount(total + dof, "contextDof");
    }
    benchesDofs = dofs;
    benchNum = static_cast<std::int32_t>(dofs.size());
    contextDof = total;
}

void GrpConfig::GetIndex(EntityName entity, int& start, int& count) const {
    if (entity < robotNum) {
        start = entity * robotDof;
        count = robotDof;
    } else if (entity < FirstBench) {
        start = robotNum * robotDof;
        count = pedestalDof;
    } else if (const int bench = entity - FirstBench; bench < benchNum) {
        const double dof = mechanism_detail::At(benchesDofs, bench);
        start = Whole(bench * dof + (robotDof + pedestalDof), "bench start");
        count = Whole(dof, "bench axes");
    }
}

std::map<std::uint64_t, std::shared_ptr<GrpConfig>>& GrpConfig::ChangeGrpConfigList() {
    static std::map<std::uint64_t, std::shared_ptr<GrpConfig>> list;
    return list;
}

const std::map<std::uint64_t, std::shared_ptr<GrpConfig>>& GrpConfig::GetGrpConfigList() {
    return ChangeGrpConfigList();
}

const std::shared_ptr<GrpConfig>& GrpConfig::GetGrpConfig(std::uint64_t system) {
    return Find(system, __LINE__, "GrpConfig::GetGrpConfig");
}

int GrpConfig::GetContextDof(std::uint64_t system) {
    return Find(system, __LINE__, "GrpConfig::GetContextDof")->contextDof;
}

int GrpConfig::GetRobotAndPedestalDof(std::uint64_t system) {
    return Find(system, __LINE__, "GrpConfig::GetRobotAndPedestalDof")->GetRobotAndPedestalDof();
}

int GrpConfig::GetRobotDof(std::uint64_t system) {
    return Find(system, __LINE__, "GrpConfig::GetRobotDof")->robotDof;
}

PedestalType GrpConfig::GetSystemType(std::uint64_t system) {
    const auto& config = Find(system, __LINE__, "GrpConfig::GetSystemType");
    if (config->robotDof == config->contextDof) {
        return PedestalTypeNone;
    }
    return config->contextDof < config->robotDof ? PedestalTypeReduced : PedestalTypeAdditional;
}

std::map<std::uint64_t, CoupedValue>& GrpConfig::ChangeCoupledList() {
    static std::map<std::uint64_t, CoupedValue> list;
    return list;
}

CoupedValue& GrpConfig::GetCoupledValue(std::uint64_t system) { return ChangeCoupledList()[system]; }
