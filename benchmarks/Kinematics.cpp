#include "Harness.h"
#include "KdlArm.h"

#include <array>
#include <cmath>
#include <kdl/chainfksolverpos_recursive.hpp>
#include <mechanism/RobotEntity.h>
#include <memory>
#include <support/SampleMechanisms.h>

// One set of joint values in, all link frames and the tool centre out; the values change with every call.

namespace {

using bench::Row;
using bench::Work;

constexpr std::uint64_t Hash = 5;
constexpr std::size_t Poses = 64;

struct Inputs {
    sample::Mechanism arm = sample::SixAxisArm();
    std::vector<std::vector<double>> values;
    std::shared_ptr<RobotEntity> robot;
    std::vector<double> ours;
    std::vector<double> peer;

    Inputs() {
        std::mt19937 random(1);
        for (std::size_t i = 0; i < Poses; ++i) {
            values.push_back(sample::RandomValues(arm, random));
        }
        const auto structure = sample::Build(arm, Hash);
        robot = std::make_shared<RobotEntity>(structure.get());
    }
};

void RunOurs(Inputs& in) {
    in.ours.clear();
    for (const auto& values : in.values) {
        in.robot->SetCurrentValue(values, Hash);
        in.robot->ForwardTrsf(Hash, false, false);
        const gp_Trsf tcp = in.robot->GetCurrentTrsfTCP();
        for (int i = 1; i <= 3; ++i) {
            in.ours.push_back(tcp.TranslationPart().Coord(i));
        }
    }
}

Work AgainstKdl(bool /*quick*/) {
    auto in = std::make_shared<Inputs>();
    auto chain = std::make_shared<KDL::Chain>(bench::KdlChain(in->arm));
    auto solver = std::make_shared<KDL::ChainFkSolverPos_recursive>(*chain);
    const auto runPeer = [in, chain, solver] {
        in->peer.clear();
        KDL::JntArray joints(6);
        KDL::Frame tip;
        for (const auto& values : in->values) {
            for (unsigned i = 0; i < 6; ++i) {
                joints(i) = values[i];
            }
            solver->JntToCart(joints, tip);
            in->peer.insert(in->peer.end(), {tip.p.x(), tip.p.y(), tip.p.z()});
        }
    };
    return {{[in] { RunOurs(*in); }, Poses}, {runPeer, Poses}, [in] {
                return bench::Difference(in->ours, in->peer, 1e-8);
            }};
}

// --- the floor: the same table on plain doubles
// --------------------------------------------------------------

struct FoldedRow {
    double a, d, theta, sinAlpha, cosAlpha;
};

using Frame34 = std::array<double, 12>;

Frame34 Times(const Frame34& t, const FoldedRow& row, double value) {
    const double c = std::cos(row.theta + value);
    const double s = std::sin(row.theta + value);
    Frame34 out;
    for (std::size_t r = 0; r < 12; r += 4) {
        const double y = t[r + 1] * row.cosAlpha + t[r + 2] * row.sinAlpha;
        const double z = t[r + 2] * row.cosAlpha - t[r + 1] * row.sinAlpha;
        out[r] = t[r] * c + y * s;
        out[r + 1] = y * c - t[r] * s;
        out[r + 2] = z;
        out[r + 3] = t[r + 3] + t[r] * row.a + z * row.d;
    }
    return out;
}

Work AgainstFloor(bool /*quick*/) {
    auto in = std::make_shared<Inputs>();
    auto rows = std::make_shared<std::vector<FoldedRow>>();
    for (const auto& [a, alpha, d, theta] : in->robot->GetArmDH()) {
        rows->push_back({a, d, theta, std::sin(alpha), std::cos(alpha)});
    }
    const gp_Trsf flange = in->robot->GetEndCenterTrsf();
    const std::array<double, 3> offset = {flange.TranslationPart().X(), flange.TranslationPart().Y(),
                                          flange.TranslationPart().Z()};
    auto frames = std::make_shared<std::vector<Frame34>>(7);
    const auto runPeer = [in, rows, frames, offset] {
        in->peer.clear();
        for (const auto& values : in->values) {
            Frame34 t = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};
            for (std::size_t i = 0; i < rows->size(); ++i) {
                t = Times(t, (*rows)[i], values[i]);
                (*frames)[i] = t;
            }
            for (std::size_t r = 0; r < 12; r += 4) {
                in->peer.push_back(t[r] * offset[0] + t[r + 1] * offset[1] + t[r + 2] * offset[2] + t[r + 3]);
            }
        }
        bench::Keep((*frames)[5][3]);
    };
    return {{[in] { RunOurs(*in); }, Poses}, {runPeer, Poses}, [in] {
                return bench::Difference(in->ours, in->peer, 1e-8);
            }};
}

} // namespace

std::vector<Row> bench::KinematicsRows() {
    return {{"fk_all_links", "KDL ChainFkSolverPos_recursive, tip alone", 0.8, AgainstKdl},
            {"fk_floor", "folded table on plain doubles, all links", 1.6, AgainstFloor}};
}
