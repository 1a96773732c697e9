#include "Harness.h"
#include "KdlArm.h"

#include <algorithm>
#include <cmath>
#include <kdl/chainfksolverpos_recursive.hpp>
#include <kdl/chainiksolverpos_lma.hpp>
#include <mechanism/RobotEntity.h>
#include <memory>
#include <planning/InverseKinematics.h>

// A flange pose in, all joint values within the limits out; the pose changes with every call. Beside our own
// forward kinematics of all links, and beside one solution of an iterative solver.

namespace {

using bench::Row;
using bench::Work;

constexpr std::uint64_t Hash = 6;
constexpr std::size_t Poses = 64;

struct Inputs {
    explicit Inputs(const sample::Mechanism& arm_) : arm(arm_) {
        std::mt19937 random(2);
        for (std::size_t i = 0; i < Poses; ++i) {
            values.push_back(sample::RandomValues(arm, random));
            poses.push_back(solver.FlangeAt(values.back()));
        }
    }

    /// Which pose has no solution with the values that made it; empty where all have.
    std::string Lost() const {
        for (std::size_t i = 0; i < Poses; ++i) {
            const auto solutions = solver.Flange(poses[i]);
            const bool found = std::any_of(solutions.begin(), solutions.end(), [&](const auto& solution) {
                return std::equal(values[i].begin(), values[i].end(), solution.values.begin(),
                                  [](double a, double b) { return std::abs(a - b) < 1e-6; });
            });
            if (!found) {
                return "pose " + std::to_string(i) + " without the values that made it";
            }
        }
        return {};
    }

    sample::Mechanism arm;
    std::shared_ptr<GenericEntityConfig> structure = sample::Build(arm, Hash);
    RobotEntity robot{structure.get()};
    planning::InverseKinematics solver{robot};
    std::vector<std::vector<double>> values;
    std::vector<Rigid> poses;
};

bench::Side AllSolutions(const std::shared_ptr<Inputs>& in) {
    return {[in] {
                for (const Rigid& pose : in->poses) {
                    bench::Keep(static_cast<double>(in->solver.Flange(pose).size()));
                }
            },
            Poses};
}

bench::Side ForwardKinematics(const std::shared_ptr<Inputs>& in) {
    return {[in] {
                for (const auto& values : in->values) {
                    in->robot.SetCurrentValue(values, Hash);
                    in->robot.ForwardTrsf(Hash, false, false);
                    bench::Keep(in->robot.GetCurrentTrsfTCP().TranslationPart().X());
                }
            },
            Poses};
}

template <sample::Mechanism (*Arm)()>
Work AgainstForward(bool /*quick*/) {
    auto in = std::make_shared<Inputs>(Arm());
    return {AllSolutions(in), ForwardKinematics(in), [in] { return in->Lost(); }};
}

/// KDL's Levenberg-Marquardt solver from values half a radian off, in metres, which its weights are made for.
struct Iterative {
    static constexpr double Metre = 1e-3;

    explicit Iterative(const Inputs& in) : chain(bench::KdlChain(in.arm, Metre)) {
        constexpr double SeedOff = 0.5;
        KDL::ChainFkSolverPos_recursive forward(chain);
        for (const auto& values : in.values) {
            KDL::JntArray joints(static_cast<unsigned>(values.size()));
            for (unsigned i = 0; i < values.size(); ++i) {
                joints(i) = values[i];
            }
            forward.JntToCart(joints, targets.emplace_back());
            for (unsigned i = 0; i < values.size(); ++i) {
                joints(i) += i % 2 == 0 ? SeedOff : -SeedOff;
            }
            seeds.push_back(joints);
        }
    }

    void Run() {
        KDL::JntArray found(chain.getNrOfJoints());
        solved = 0;
        for (std::size_t i = 0; i < targets.size(); ++i) {
            solved += solver.CartToJnt(seeds[i], targets[i], found) >= 0 ? 1 : 0;
        }
    }

    KDL::Chain chain;
    KDL::ChainIkSolverPos_LMA solver{chain};
    std::vector<KDL::Frame> targets;
    std::vector<KDL::JntArray> seeds;
    int solved = 0;
};

Work AgainstKdl(bool /*quick*/) {
    auto in = std::make_shared<Inputs>(sample::SixAxisArm());
    auto peer = std::make_shared<Iterative>(*in);
    return {AllSolutions(in), {[peer] { peer->Run(); }, Poses}, [in, peer] {
                // It may end in a local minimum now and then.
                constexpr int Few = Poses / 2;
                return peer->solved < Few ? std::to_string(peer->solved) + " poses solved by the peer"
                                          : in->Lost();
            }};
}

} // namespace

std::vector<Row> bench::InverseKinematicsRows() {
    return {{"ik_all", "our forward kinematics of all links", 6, AgainstForward<sample::SixAxisArm>},
            {"ik_kdl", "KDL ChainIkSolverPos_LMA, one solution", 0.05, AgainstKdl},
            {"ik_parallel", "our forward kinematics of all links", 6, AgainstForward<sample::ParallelArm>},
            {"ik_coupled", "our forward kinematics of all links", 60, AgainstForward<sample::CoupledArm>}};
}
