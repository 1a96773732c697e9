#include "Checked.h"

#include <algorithm>
#include <mechanism/RobotEntity.h>
#include <stdexcept>

using namespace mechanism_detail;

namespace {

void RequireBench(const GenericEntity* bench) {
    if (bench == nullptr) {
        throw std::invalid_argument("workbench: null, expected a bench");
    }
}

} // namespace

void RobotEntity::AddWorkbench(GenericEntity* bench) {
    RequireBench(bench);
    bench->AddSystem(GetHashIndex());
    if (std::find(workbenches.begin(), workbenches.end(), bench) != workbenches.end()) {
        return;
    }
    bench->TellAtEnd(*this, [this, bench] { ForgetWorkbench(bench); });
    workbenches.push_back(bench);
    if (currentWorkbench == -1) {
        currentWorkbench = 0;
    }
}

void RobotEntity::DeleteWorkbench(GenericEntity* bench) {
    RequireBench(bench);
    bench->DeleteSystem(GetHashIndex());
    ForgetWorkbench(bench);
}

void RobotEntity::ForgetWorkbench(const GenericEntity* bench) {
    int position = 0;
    const auto found = std::find(workbenches.begin(), workbenches.end(), bench);
    if (found != workbenches.end()) {
        position = static_cast<int>(found - workbenches.begin());
        workbenches.erase(found);
        if (currentWorkbench == position) {
            currentWorkbench = 0;
        }
    }
    if (position < currentWorkbench) {
        --currentWorkbench;
    }
}

void RobotEntity::SetCurrentWorkbench(GenericEntity* const bench) {
    for (std::size_t i = 0; i < workbenches.size(); ++i) {
        if (workbenches[i] == bench) {
            currentWorkbench = static_cast<int>(i);
        }
    }
}

const GenericEntity* RobotEntity::GetCurrentWorkbench() const {
    return workbenches.empty() || currentWorkbench < 0 ? nullptr : At(workbenches, currentWorkbench);
}
