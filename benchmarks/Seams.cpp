#include "Harness.h"

#include <algorithm>
#include <planning/Ladder.h>
#include <planning/SeamPlanner.h>
#include <support/Seams.h>

// A saddle welded by an arm. The ladder of all its candidates is searched beside a search that looks at all
// pairs; and the whole planning takes no longer a pose for a hundred times as many.

namespace {

using bench::Row;
using bench::Work;
using planning::Rung;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr int Spins = 72;
constexpr double Spacing = 0.8; // mm

/// All joint values of the tool at every spin about its axis and 64 positions of the positioner, pose by
/// pose.
struct Candidates {
    /// @param poses of the first part of the saddle.
    explicit Candidates(int poses) {
        constexpr double Apart = 10 * planning::DegreeInRadians;
        const sample::WeldingCell cell;
        constexpr int Whole = 500;
        auto part = sample::Saddle(Whole);
        part.resize(static_cast<std::size_t>(poses));
        for (const planning::SeamPose& pose : part) {
            Rung& rung = rungs.emplace_back();
            rung.axes = 8;
            for (int at = 0; at < 64; ++at) {
                Add(cell, pose, {(at / 8 - 4) * Apart, (at % 8 - 4) * Apart}, rung);
            }
        }
    }
    static void Add(const sample::WeldingCell& cell, const planning::SeamPose& pose,
                    const std::vector<double>& positions, Rung& rung) {
        const gp_Trsf work = cell.tablePlace * cell.tableModel.FlangeAt(positions);
        const gp_Dir tool(pose.tool[0], pose.tool[1], pose.tool[2]);
        const gp_Pnt point(pose.point[0], pose.point[1], pose.point[2]);
        for (int k = 0; k < Spins; ++k) {
            gp_Ax2 frame(point, tool, gp::DX());
            frame.Rotate(frame.Axis(), 2 * std::numbers::pi * k / Spins);
            Add(*cell.arm, work * sample::Frame(point, tool, frame.XDirection()), positions, rung);
        }
    }
    static void Add(const planning::CarriedArm& arm, const gp_Trsf& tool,
                    const std::vector<double>& positions, Rung& rung) {
        for (const planning::Solution& solution : arm.SolveInWorld(Rigid::From(tool))) {
            arm.Arm().ForEachTurn(solution, [&](const planning::Solution& turned) {
                rung.values.insert(rung.values.end(), turned.values.begin(), turned.values.begin() + 6);
                rung.values.insert(rung.values.end(), positions.begin(), positions.end());
                rung.costs.push_back(Spacing / 100 * std::abs(turned.values[5]));
                const auto& c = turned.configuration;
                rung.groups.push_back(static_cast<std::uint8_t>(4 * static_cast<int>(c.shoulder) +
                                                                2 * static_cast<int>(c.elbow) +
                                                                static_cast<int>(c.wrist)));
            });
        }
    }

    std::vector<Rung> rungs;
    planning::StepRules rules{std::vector<double>(8, 10 * planning::DegreeInRadians),
                              std::vector<double>(8, 100)};
    double ours = 0;
    double peer = 0;
};

void RunLadder(Candidates& in) {
    planning::Ladder ladder;
    for (const Rung& rung : in.rungs) {
        ladder.Append(rung, Spacing, in.rules);
    }
    in.ours = ladder.Cost();
}

void RunAllPairs(Candidates& in) {
    std::vector<double> totals = in.rungs.front().costs;
    std::vector<std::vector<std::uint32_t>> before(in.rungs.size());
    for (std::size_t k = 1; k < in.rungs.size(); ++k) {
        const Rung& last = in.rungs[k - 1];
        const Rung& rung = in.rungs[k];
        std::vector<double> next(rung.size(), Infinity);
        before[k].resize(rung.size());
        for (std::size_t i = 0; i < rung.size(); ++i) {
            for (std::uint32_t j = 0; j < last.size(); ++j) {
                if (last.groups[j] != rung.groups[i]) {
                    continue;
                }
                const double total =
                    totals[j] + planning::StepCost(in.rules, last.Row(j), rung.Row(i), Spacing);
                if (total < next[i]) {
                    next[i] = total;
                    before[k][i] = j;
                }
            }
            next[i] += rung.costs[i];
        }
        totals = std::move(next);
    }
    in.peer = *std::min_element(totals.begin(), totals.end());
}

Work AgainstAllPairs(bool quick) {
    auto in = std::make_shared<Candidates>(quick ? 3 : 6);
    const auto poses = static_cast<double>(in->rungs.size());
    return {{[in] { RunLadder(*in); }, poses}, {[in] { RunAllPairs(*in); }, poses}, [in] {
                return in->ours == in->peer && in->ours < Infinity
                           ? std::string()
                           : "costs " + std::to_string(in->ours) + " and " + std::to_string(in->peer);
            }};
}

struct Planned {
    explicit Planned(int poses) : seam{sample::Saddle(poses), {}, 50, 50} {}
    void Run() { found = planning::SeamPlanner(*cell.arm, {}).Plan(seam).Found(); }

    const sample::WeldingCell cell;
    const planning::Seam seam;
    bool found = false;
};

Work Growth(bool quick) {
    const int few = 100;
    const int many = quick ? 500 : 10000;
    auto large = std::make_shared<Planned>(many);
    auto small = std::make_shared<Planned>(few);
    return {{[large] { large->Run(); }, static_cast<double>(many)},
            {[small] { small->Run(); }, static_cast<double>(few)},
            [large, small] { return large->found && small->found ? std::string() : "no way"; }};
}

} // namespace

std::vector<Row> bench::SeamRows() {
    return {
        {"seam_ladder", "dynamic programming over all pairs of the same candidates", 0.05, AgainstAllPairs},
        {"seam_growth", "ours on 100 poses, a pose", 1.3, Growth}};
}
