#include "Checked.h"

#include <Bnd_OBB.hxx>
#include <algorithm>
#include <cmath>
#include <gp.hxx>
#include <host/tools/gpHandle.h>
#include <mechanism/GrpState.h>
#include <mechanism/PedestalEntity.h>
#include <optional>
#include <stdexcept>

using namespace mechanism_detail;

namespace {

/// Values below this (mm, rad) count as no motion.
constexpr double NoMotion = 1e-6;

using Edges = std::vector<std::pair<double, gp_Dir>>;

Edges EdgesIn(const gp_Trsf& frame, const Bnd_OBB& box) {
    Edges edges = gpHandle::GetOBBlengthAndDir(box);
    std::stable_sort(edges.begin(), edges.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    const gp_Trsf intoFrame = frame.Inverted();
    for (auto& [length, direction] : edges) {
        direction.Transform(intoFrame);
    }
    return edges;
}

/// Motion by a value about or along an axis; nothing for a joint that is neither rotary nor linear.
std::optional<gp_Trsf> MotionAbout(const gp_Ax1& axis, JointType type, double value) {
    gp_Trsf motion;
    if (type == JointRotary) {
        motion.SetRotation(axis, value);
    } else if (type == JointLinear) {
        motion.SetTranslation(gp_Vec(axis.Direction()) * value);
    } else {
        return std::nullopt;
    }
    return motion;
}

/// The state's accessors are not const, so a copy is read.
std::vector<double> PedestalValues(GrpState state) { return state.GetValues(Pedestal); }

} // namespace

std::vector<std::array<double, 12>> PedestalEntity::GetAxes(size_t system) {
    const auto [start, count] = GetCurrentValueData(system);
    std::vector<std::array<double, 12>> axes;
    axes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        if (const LinkRod* link = GetLink(start + i)) {
            auto& numbers = axes.emplace_back();
            TrsfToDoubleArray(gpHandle::Ax1ToTrsf(link->axis), numbers.data(), numbers.data() + 3);
        }
    }
    return axes;
}

gp_Dir PedestalEntity::GetMaxAxisDir(size_t system) {
    gp_Dir direction = gp::DX();
    if (system == 0 || GetDOF(0) == 0) {
        return direction;
    }
    const auto [start, count] = GetCurrentValueData(system);
    double longest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const LinkRod* link = GetLink(start + i);
        if (link == nullptr) {
            continue;
        }
        const double span = link->GetLimit().second - link->GetLimit().first;
        if (span > longest) {
            longest = span;
            direction = link->GetDirection();
        }
    }
    return direction;
}

std::vector<double> PedestalEntity::GetPathBoxOffsetScale(const Bnd_OBB& box, size_t system) {
    const auto [start, count] = GetCurrentValueData(system);
    std::vector<double> scales(count, 1.0);
    if (box.IsVoid()) {
        return scales;
    }
    const Edges edges = EdgesIn(GetRootMdlTrsf(), box);
    const auto& [longest, along] = At(edges, 0);
    const auto& [middle, across] = At(edges, 1);
    const auto& [shortest, through] = At(edges, 2);
    for (std::size_t i = 0; i < count; ++i) {
        if (const LinkRod* link = GetLink(start + i)) {
            const gp_Dir& axis = link->GetDirection();
            scales[i] = along * axis + across * axis * middle / longest + through * axis * shortest / longest;
        }
    }
    return scales;
}

gp_XYZ PedestalEntity::GetSpeedValue(const double* speeds, size_t system) {
    gp_XYZ velocity(0, 0, 0);
    if (GetDOF(system) == 0) {
        return velocity;
    }
    const auto [start, count] = GetCurrentValueData(system);
    if (speeds == nullptr) {
        throw std::invalid_argument(GetName() + ": null speeds, expected " + std::to_string(count));
    }
    for (std::size_t i = 0; i < count; ++i) {
        const LinkRod* link = GetLink(start + i);
        if (link == nullptr) {
            continue;
        }
        if (link->jointType != JointLinear) {
            break;
        }
        velocity += link->axis.Transformed(GetRootMdlTrsf()).Direction().XYZ() * speeds[i];
    }
    return velocity;
}

gp_XYZ PedestalEntity::GetStateValue(const gp_Trsf& target, size_t system) {
    const auto [start, count] = GetCurrentValueData(system);
    gp_XYZ sum(0, 0, 0);
    for (std::size_t i = 0; i < count; ++i) {
        if (const LinkRod* link = GetLink(start + i)) {
            sum += link->axis.Direction().XYZ().Multiplied(target.TranslationPart());
        }
    }
    return sum;
}

gp_Trsf PedestalEntity::TransLocEulerToZero(const gp_Trsf& pose, const GrpState& state, const gp_Trsf& base) {
    if (GetDOF(state.GetSystem()) == 0) {
        return pose;
    }
    const auto [start, count] = GetCurrentValueData(state.GetSystem());
    const std::vector<double> values = PedestalValues(state);
    gp_Trsf result = pose;
    std::size_t next = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const LinkRod* link = GetLink(start + i);
        if (link == nullptr) {
            continue;
        }
        const double value = At(values, next++);
        if (std::abs(value) < NoMotion) {
            continue;
        }
        const auto motion = MotionAbout(link->axis.Transformed(base), link->jointType, value);
        if (!motion) {
            break;
        }
        result.PreMultiply(motion->Inverted());
    }
    return result;
}
