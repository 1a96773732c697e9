#include "Harness.h"

#include <Eigen/Geometry>
#include <cmath>
#include <gp_TrsfNLerp.hxx>
#include <host/tools/gpHandle.h>
#include <mechanism/InterpHandle.h>
#include <memory>
#include <numbers>
#include <support/Registrar.h>

namespace {

using bench::Row;
using bench::Work;

constexpr std::uint64_t System = 6001;
constexpr std::size_t Values = 7;

// States point at their system's registration, so it outlives all of them.
std::unique_ptr<GrpState> NewState() {
    static const Registrar system{System, {.pedestal = 1, .joints = 6, .robots = 1, .benches = {}}};
    return std::make_unique<GrpState>(System);
}

struct States {
    std::unique_ptr<GrpState> a = NewState();
    std::unique_ptr<GrpState> b = NewState();
    std::vector<double> steps = std::vector<double>(Values, 1.0);
    std::vector<double> ours;
    std::vector<double> peer;

    explicit States(int count) {
        b->SetValues({1.0, -2.0, 0.5, 0.25, 3.0, -1.0, static_cast<double>(count)});
        a->SetLocEuler(0, LocEuler({0, 0, 0}, {0.1, 0.2, 0.3}));
        b->SetLocEuler(0, LocEuler({count + 0.5, 0, 0}, {1.0, -0.4, 0.8}));
    }
};

/// A few numbers of a sequence, which differ where the sequences do.
std::vector<double> Digest(const std::vector<GrpState>& states) {
    std::vector<double> numbers{static_cast<double>(states.size())};
    for (std::size_t i = 0; i < states.size(); i += states.size() / 7 + 1) {
        numbers.insert(numbers.end(), states[i].GetValuesPtr(), states[i].GetValuesPtr() + Values);
        numbers.push_back(states[i].GetLocEuler(0).location.X());
        numbers.push_back(states[i].GetLocEuler(0).euler.Y());
    }
    return numbers;
}

/// What a state is to the allocator: one block of values, one of poses.
struct HandMade {
    std::unique_ptr<double[]> values;
    std::vector<LocEuler> poses;
};

std::vector<HandMade> StatesByHand(const States& in, int parts) {
    std::vector<HandMade> states;
    states.reserve(static_cast<std::size_t>(parts) + 1);
    const double* const from = in.a->GetValuesPtr();
    double change[Values];
    for (std::size_t i = 0; i < Values; ++i) {
        change[i] = (in.b->GetValuesPtr()[i] - from[i]) / parts;
    }
    for (int k = 0; k <= parts; ++k) {
        HandMade& state = states.emplace_back();
        state.values = std::make_unique_for_overwrite<double[]>(Values);
        state.poses.resize(1);
        for (std::size_t i = 0; i < Values; ++i) {
            state.values[i] = from[i] + k * change[i];
        }
    }
    return states;
}

Work JointStates(int count) {
    auto in = std::make_shared<States>(count);
    return {{[in] {
                 const auto states = InterpHandle::InterpolationPts(*in->a, *in->b, in->steps);
                 in->ours = {static_cast<double>(states.size()), states[states.size() / 3].GetValuesPtr()[1]};
             },
             static_cast<double>(count)},
            {[in, count] {
                 const auto states = StatesByHand(*in, count);
                 in->peer = {static_cast<double>(states.size()), states[states.size() / 3].values[1]};
             },
             static_cast<double>(count)},
            [in] { return bench::Difference(in->ours, in->peer, 1e-12); }};
}

std::vector<GrpState> GapsByHand(const States& in, int between) {
    const gp_TrsfNLerp blend(gpHandle::EulerToTrsf(in.a->GetLocEuler(0)),
                             gpHandle::EulerToTrsf(in.b->GetLocEuler(0)));
    std::vector<GrpState> states;
    states.reserve(static_cast<std::size_t>(between) + 2);
    states.push_back(*in.a);
    for (int k = 1; k <= between; ++k) {
        const double t = k / (between + 1.0);
        GrpState state(*in.a);
        for (std::size_t i = 0; i < Values; ++i) {
            state.GetValuesPtr()[i] += (in.b->GetValuesPtr()[i] - in.a->GetValuesPtr()[i]) * t;
        }
        gp_Trsf pose;
        blend.Interpolate(t, pose);
        gp_Pnt angles;
        double x = 0;
        double y = 0;
        double z = 0;
        pose.GetRotation().GetEulerAngles(gp_Intrinsic_XYZ, x, y, z);
        state.SetLocEuler(0, LocEuler(gp_Pnt(pose.TranslationPart()), gp_Pnt(x, y, z)));
        states.push_back(std::move(state));
    }
    states.push_back(*in.b);
    return states;
}

Work PosGapStates(bool quick) {
    const int count = quick ? 100 : 10000;
    auto in = std::make_shared<States>(count);
    return {{[in] { in->ours = Digest(InterpHandle::InterpolationPtsByPosGap(*in->a, *in->b, 1.0)); },
             static_cast<double>(count)},
            {[in, count] { in->peer = Digest(GapsByHand(*in, count)); }, static_cast<double>(count)},
            [in] { return bench::Difference(in->ours, in->peer, 1e-9); }};
}

// The peer blends spherically, so only the ends and the middle are the same rotation.
Work Orientations(bool quick) {
    const int n = quick ? 101 : 10001;
    auto ours = std::make_shared<std::vector<gp_Pnt>>();
    auto peer = std::make_shared<std::vector<Eigen::Vector3d>>();
    const gp_Pnt a(0.1, 0.2, 0.3);
    const gp_Pnt b(1.0, -0.4, 0.8);
    const auto toEigen = [](const gp_Pnt& p) {
        return Eigen::Quaterniond(Eigen::AngleAxisd(p.X(), Eigen::Vector3d::UnitX()) *
                                  Eigen::AngleAxisd(p.Y(), Eigen::Vector3d::UnitY()) *
                                  Eigen::AngleAxisd(p.Z(), Eigen::Vector3d::UnitZ()));
    };
    const Eigen::Quaterniond from = toEigen(a);
    const Eigen::Quaterniond to = toEigen(b);
    const auto runPeer = [peer, from, to, n] {
        peer->clear();
        peer->reserve(static_cast<std::size_t>(n));
        for (int k = 0; k < n; ++k) {
            peer->push_back(
                from.slerp(static_cast<double>(k) / (n - 1), to).toRotationMatrix().eulerAngles(0, 1, 2));
        }
    };
    const auto difference = [ours, peer, n] {
        std::vector<double> x;
        std::vector<double> y;
        for (const int k : {0, (n - 1) / 2, n - 1}) {
            const auto i = static_cast<std::size_t>(k);
            x.insert(x.end(), {(*ours)[i].X(), (*ours)[i].Y(), (*ours)[i].Z()});
            y.insert(y.end(), {(*peer)[i].x(), (*peer)[i].y(), (*peer)[i].z()});
        }
        return bench::Difference(x, y, 1e-9);
    };
    return {{[=] { *ours = InterpHandle::EulerByQuaternion(a, b, n); }, static_cast<double>(n)},
            {runPeer, static_cast<double>(n)},
            difference};
}

Work JointStatesGrowth(bool quick) {
    const Work large = JointStates(quick ? 1000 : 1000000);
    const Work small = JointStates(quick ? 100 : 1000);
    return {large.ours, small.ours, [] { return std::string(); }};
}

} // namespace

std::vector<Row> bench::InterpolationRows() {
    return {{"joint_states", "the same states by hand", 1.25,
             [](bool quick) { return JointStates(quick ? 100 : 10000); }},
            {"joint_states_growth", "itself at 1e3 states, ours at 1e6", 1.5, JointStatesGrowth},
            {"pos_gap_states", "by hand over gp_TrsfNLerp", 1.25, PosGapStates},
            {"orientations", "Eigen slerp and Euler angles", 1.3, Orientations}};
}
