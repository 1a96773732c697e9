#include <mechanism/GrpState.h>

#include "BoundedCopy.h"
#include "Checked.h"
#include "Whole.h"

#include <algorithm>
#include <memory>
#include <utility>

const GrpConfig GrpState::NoLayout = [] {
    GrpConfig none;
    none.robotDof = 0;
    none.contextDof = 0;
    return none;
}();

GrpState::GrpState(std::uint64_t system_) {
    Bind(system_, GrpConfig::GetGrpConfig(system_).get());
    std::fill_n(values, room, 0.0);
}

GrpState::GrpState(const GrpState& other) { CopyFrom(other, false); }

GrpState::GrpState(GrpState&& other) { TakeFrom(other); }

GrpState& GrpState::operator=(const GrpState& other) {
    if (this != &other) {
        const double* const own = values;
        CopyFrom(other, false);
        if (system == 0) {
            values = nullptr;
        }
        // Released last: if the copy had failed, this state would still need its own buffer.
        delete[] own;
    }
    return *this;
}

GrpState& GrpState::operator=(GrpState&& other) {
    if (this != &other) {
        TakeFrom(other);
    }
    return *this;
}

GrpState::~GrpState() { delete[] values; }

void GrpState::Bind(std::uint64_t system_, const GrpConfig* config_) {
    // The field is public, so a negative count is possible; it counts as 0.
    const int count = std::max(config_->contextDof, 0);
    tcps.resize(static_cast<std::size_t>(std::max(config_->robotNum, 0)));
    values = new double[static_cast<std::size_t>(count)];
    room = count;
    config = config_;
    system = system_;
}

void GrpState::CopyFrom(const GrpState& other, bool shareValues) {
    if (other.system == 0) {
        system = 0;
        return;
    }
    std::unique_ptr<double[]> copy;
    const int newRoom = shareValues ? other.room : other.CountRoom();
    if (!shareValues) {
        const auto count = static_cast<std::size_t>(newRoom);
        copy = std::make_unique_for_overwrite<double[]>(count);
        mechanism_detail::CopyBounded(copy.get(), count, other.values, count);
    }
    CopyFields(other);
    values = shareValues ? other.values : copy.release();
    room = newRoom;
}

void GrpState::CopyFields(const GrpState& other) {
    // Memory for the two fields that need it is reserved first, so that nothing fails after the first change.
    tcps.reserve(other.tcps.size());
    logicalCmd.reserve(other.logicalCmd.size());
    tcps = other.tcps;
    logicalCmd = other.logicalCmd;
    config = other.config;
    system = other.system;
    moveModel = other.moveModel;
    cmdType = other.cmdType;
    needExport = other.needExport;
    pathType = other.pathType;
    toolIndex = other.toolIndex;
    offset = other.offset;
}

void GrpState::TakeFrom(GrpState& other) {
    if (other.system != 0) {
        CopyFields(other);
        room = other.room;
    }
    system = other.system;
    delete[] std::exchange(values, std::exchange(other.values, nullptr));
    if (system == 0) {
        delete[] std::exchange(values, nullptr);
    }
}

void GrpState::Swap(GrpState& other) noexcept {
    std::swap(tcps, other.tcps);
    std::swap(values, other.values);
    std::swap(room, other.room);
    std::swap(offset, other.offset);
    std::swap(toolIndex, other.toolIndex);
    std::swap(config, other.config);
    std::swap(system, other.system);
    std::swap(needExport, other.needExport);
    std::swap(moveModel, other.moveModel);
    std::swap(logicalCmd, other.logicalCmd);
    std::swap(cmdType, other.cmdType);
    std::swap(pathType, other.pathType);
}

void GrpState::SetCmdTypeAndCmd(RobotMoveCmdType type, const std::string& cmd) {
    cmdType = type;
    if (type == MoveCmdLogical) {
        logicalCmd = cmd;
    }
}

int GrpState::GetBenchDof() const {
    int total = 0;
    for (int bench = 0; bench < config->benchNum; ++bench) {
        total =
            mechanism_detail::Whole(total + mechanism_detail::At(config->benchesDofs, bench), "bench axes");
    }
    return total;
}

const LocEuler& GrpState::GetLocEuler(int robot) const { return mechanism_detail::At(tcps, robot); }

bool GrpState::GetLocEuler(int robot, LocEuler& out) const {
    if (robot < 0 || std::cmp_greater_equal(robot, tcps.size())) {
        return false;
    }
    out = tcps[static_cast<std::size_t>(robot)];
    return true;
}

void GrpState::SetLocEuler(int robot, const LocEuler& pose) { mechanism_detail::At(tcps, robot) = pose; }
