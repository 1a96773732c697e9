#include "SeamReasons.h"

#include "NearGrid.h"

#include <algorithm>
#include <cmath>
#include <host/tools/TextHandle.h>

namespace planning {

namespace {

/// Choices that are looked at to find reasons.
constexpr double MostLooked = 4e5;

/// How many rungs the longest chain of steps to each candidate has.
class Chains {
public:
    void Append(Rung&& rung, const StepRules& rules) {
        std::vector<std::size_t> longer(rung.size(), 1);
        const std::vector<double> all(last.size());
        const NearGrid near(last, rules, 1, all);
        for (std::size_t i = 0; i < rung.size(); ++i) {
            near.Around(
                rung.Row(i), rung.groups[i], [] { return std::numeric_limits<double>::infinity(); },
                [&](const NearGrid::Found& from) {
                    const std::size_t length = lengths[from.candidate];
                    if (length >= longer[i] && std::isfinite(StepCost(rules, from.row, rung.Row(i), 1))) {
                        longer[i] = length + 1;
                    }
                });
        }
        before = std::move(last);
        beforeLengths = std::move(lengths);
        last = std::move(rung);
        lengths = std::move(longer);
    }
    void AllowChange() { lengths.assign(lengths.size(), Longest()); }
    std::size_t Longest() const {
        return lengths.empty() ? 0 : *std::max_element(lengths.begin(), lengths.end());
    }

    Rung last, before;
    std::vector<std::size_t> lengths, beforeLengths;
};

/// Counts for each candidate of the last rung what keeps the way at `reached` rungs from stepping to it.
void CountSteps(const Chains& chains, std::size_t reached, const StepRules& rules, NoWay& why) {
    why.steps.assign(rules.limits.size(), 0);
    for (std::size_t i = 0; i < chains.last.size(); ++i) {
        double least = std::numeric_limits<double>::infinity();
        std::size_t axis = 0;
        for (std::size_t j = 0; j < chains.before.size(); ++j) {
            if (chains.beforeLengths[j] < reached || chains.before.groups[j] != chains.last.groups[i]) {
                continue;
            }
            double most = 0;
            std::size_t worst = 0;
            for (std::size_t k = 0; k < rules.limits.size() && most < least; ++k) {
                const double part =
                    std::abs(chains.last.Row(i)[k] - chains.before.Row(j)[k]) / rules.limits[k];
                worst = part > most ? k : worst;
                most = std::max(most, part);
            }
            axis = most < least ? worst : axis;
            least = std::min(least, most);
        }
        ++(std::isfinite(least) ? why.steps[axis] : why.configuration);
    }
}

/// @param strict whether steps are to keep the rules even where the grid is coarser than a step.
NoWay Explain(const SeamSearch& search, const SeamRungs& rungs, const std::vector<SeamPose>& poses,
              const Thinning& thinning, bool strict, bool& blocked) {
    const auto looked = search.PosesOf(thinning);
    NoWay why;
    why.first = 1;
    std::vector<Choice> grid;
    SeamRung rung;
    Chains chains;
    std::size_t longest = 0;
    blocked = false;
    for (std::size_t k = 0; k < looked.size(); ++k) {
        const std::size_t left = rungs.Choices().Grid(looked[k], thinning.coarse, grid);
        rung.Clear();
        rungs.Add(looked[k], grid, 1, SeamRungs::AnyGroup, rung);
        const std::size_t strides = k > 0 ? looked[k] - looked[k - 1] : 1;
        const StepRules rules =
            strict ? rungs.Steps(static_cast<double>(strides)) : search.StepsOf(thinning, strides);
        chains.Append(std::move(rung.rung), rules);
        rung.rung = {};
        const std::size_t chain = chains.Longest();
        if (chain < k + 1 && !blocked) {
            blocked = true;
            why.pose = looked[k];
            why.downhand = left;
            SeamRung again;
            rungs.Add(looked[k], grid, 1, SeamRungs::AnyGroup, again, &why);
            CountSteps(chains, k, rules, why);
        }
        if (chain > longest) {
            longest = chain;
            why.first = looked[k + 1 - chain];
            why.last = looked[k];
        }
        if (poses[looked[k]].mayChange) {
            chains.AllowChange();
        }
    }
    return why;
}

} // namespace

NoWay Explain(const SeamSearch& search, const SeamRungs& rungs, const std::vector<SeamPose>& poses) {
    const Thinning thinning = search.ThinnedTo(MostLooked);
    bool blocked = false;
    NoWay why = Explain(search, rungs, poses, thinning, false, blocked);
    return blocked ? why : Explain(search, rungs, poses, thinning, true, blocked);
}

std::string NoWay::Reasons(std::size_t joints) const {
    std::string lost;
    const auto add = [&](std::size_t count, const std::string& what) {
        if (count > 0) {
            lost += (lost.empty() ? "" : ", ") + std::to_string(count) + " " + what;
        }
    };
    const auto axisName = [&](std::size_t i) {
        return i < joints ? "joint " + std::to_string(i + 1)
                          : "external axis " + std::to_string(i + 1 - joints);
    };
    add(reach, "out of reach");
    for (std::size_t i = 0; i < limits.size(); ++i) {
        add(limits[i], "past the limit of " + axisName(i));
    }
    add(singular, "singular");
    for (std::size_t i = 0; i < steps.size(); ++i) {
        add(steps[i], "past the step limit of " + axisName(i));
    }
    add(configuration, "of another configuration");
    add(downhand, "not downhand");
    add(approach, "without a way to or from the seam");
    return lost.empty() ? "a way within the step limits between the candidates" : lost;
}

std::string NoWay::Stretch(std::size_t poses) const {
    return "no way past pose " + std::to_string(pose) + " of " + std::to_string(poses) + "; " +
           (last < first
                ? std::string("no pose can be reached")
                : "poses " + std::to_string(first) + " to " + std::to_string(last) + " can be followed");
}

} // namespace planning
