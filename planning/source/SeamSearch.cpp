#include "SeamSearch.h"

#include <algorithm>
#include <cmath>

namespace planning {

namespace {

/// Choices that a first look may take: some tenths of a second. More are tried where it finds no way.
constexpr double FirstLook = 5e4;
constexpr double LastLook = 4e5;
constexpr double MoreLook = 8;
/// A first look keeps this many poses, and this many values of a dimension.
constexpr std::size_t FewestPoses = 40;
constexpr double FewestValues = 9;
/// Poses closer than this (mm) are as good as one to a first look.
constexpr double LookLength = 4;
/// Poses on one place are apart by so much, mm.
constexpr double LeastLength = 0.01;
/// A coarse grid's neighbours lie within this many of its steps: its axes move by more than the choice does.
constexpr double StepsOfGrid = 1.5;

} // namespace

SeamSearch::SeamSearch(const SeamRungs& rungs_, const std::vector<SeamPose>& poses_)
    : rungs(rungs_), choices(rungs_.Choices()), poses(poses_) {
    for (std::size_t i = 0; i < poses.size(); ++i) {
        all.push_back(i);
    }
}

Thinning SeamSearch::ThinnedTo(double most) const {
    Thinning thinning;
    thinning.coarse.fill(1);
    while (true) {
        double count = static_cast<double>(PosesOf(thinning).size());
        std::size_t widest = MaxDims;
        double values = 0;
        for (const std::size_t dim : choices.Varying()) {
            const double n = choices.Count(dim) / thinning.coarse[dim];
            count *= std::max(1.0, n);
            if (n > values) {
                values = n;
                widest = dim;
            }
        }
        const double apart = choices.Line().Total() * static_cast<double>(thinning.stride) /
                             static_cast<double>(poses.size() - 1);
        const bool fewer = poses.size() / thinning.stride > 2 * FewestPoses;
        if (count <= most || (!fewer && values < 3)) {
            return thinning;
        }
        if (fewer && (apart < LookLength || values <= FewestValues)) {
            thinning.stride *= 2;
        } else if (values > 3) {
            thinning.coarse[widest] *= 2;
        } else {
            return thinning;
        }
    }
}

std::vector<std::size_t> SeamSearch::PosesOf(const Thinning& thinning) const {
    std::vector<std::size_t> looked;
    for (std::size_t i = 0; i < poses.size(); ++i) {
        if (i % thinning.stride == 0 || i + 1 == poses.size() || poses[i].mayChange) {
            looked.push_back(i);
        }
    }
    return looked;
}

double SeamSearch::Between(std::size_t from, std::size_t to) const {
    return std::max(LeastLength, choices.Line().At(to) - choices.Line().At(from));
}

double SeamSearch::Share(const std::vector<std::size_t>& looked, std::size_t k) const {
    const double before = k > 0 ? Between(looked[k - 1], looked[k]) : 0;
    const double after = k + 1 < looked.size() ? Between(looked[k], looked[k + 1]) : 0;
    return (before + after) / 2;
}

StepRules SeamSearch::StepsOf(const Thinning& thinning, std::size_t strides) const {
    StepRules rules = rungs.Steps(static_cast<double>(strides));
    const std::size_t joints = rules.limits.size() - choices.Outer();
    double turns = 0; // by which neighbouring choices may turn the arm
    for (const std::size_t dim : choices.Varying()) {
        const double step = StepsOfGrid * choices.Step(dim) * thinning.coarse[dim];
        const bool outer = dim >= Tilts;
        const std::size_t axis = outer ? joints + dim - Tilts : 5;
        if (thinning.coarse[dim] > 1 || step > rules.limits[axis]) {
            const bool slides = outer && choices.Slides(dim - Tilts);
            rules.limits[axis] += outer ? step : 0;
            // A carrier that slides turns the arm by about this.
            turns = dim == 3 ? turns : std::max(turns, slides ? step / choices.Reach() : step);
        }
    }
    for (std::size_t i = 0; i < joints; ++i) {
        rules.limits[i] += turns;
    }
    return rules;
}

bool SeamSearch::IsWhole(const Thinning& thinning) const {
    return thinning.stride == 1 && StepsOf(thinning, 1).limits == rungs.Steps(1).limits;
}

SeamStop SeamSearch::Stop(std::size_t pose, const Choice& choice, const SeamRung& rung,
                          std::size_t candidate) const {
    const double* row = rung.rung.Row(candidate);
    return {pose, choice, std::vector<double>(row, row + rung.rung.axes), rung.rung.groups[candidate],
            rung.rung.costs[candidate]};
}

SeamWay SeamSearch::OnGrid(const Thinning& thinning) const {
    const std::vector<std::size_t> looked = PosesOf(thinning);
    std::vector<std::vector<std::uint32_t>> choiceOf;
    std::vector<Choice> grid;
    SeamRung rung;
    Ladder ladder;
    for (std::size_t k = 0; k < looked.size(); ++k) {
        choices.Grid(looked[k], thinning.coarse, grid);
        rung.Clear();
        rungs.Add(looked[k], grid, Share(looked, k), SeamRungs::AnyGroup, rung);
        const double length = k > 0 ? Between(looked[k - 1], looked[k]) : 1;
        const std::size_t strides = k > 0 ? looked[k] - looked[k - 1] : 1;
        if (ladder.Append(rung.rung, length, StepsOf(thinning, strides)) == 0) {
            return {};
        }
        if (poses[looked[k]].mayChange) {
            ladder.AllowChange(rungs.Rules().costs.change);
        }
        choiceOf.push_back(rung.choice);
    }
    SeamWay way{{}, ladder.Cost()};
    for (const Ladder::Stop& stop : ladder.Way()) {
        // Solved again: values of all candidates would take the memory that is kept small.
        const std::size_t pose = looked[stop.rung];
        const auto& list = choiceOf[stop.rung];
        const std::uint32_t chosen = list[stop.candidate];
        const auto first = std::lower_bound(list.begin(), list.end(), chosen) - list.begin();
        choices.Grid(pose, thinning.coarse, grid);
        rung.Clear();
        rungs.Add(pose, std::span(grid).subspan(chosen, 1), Share(looked, stop.rung), SeamRungs::AnyGroup,
                  rung);
        way.stops.push_back(Stop(pose, grid[chosen], rung, stop.candidate - static_cast<std::size_t>(first)));
    }
    TakeTurns(way);
    return way;
}

/// Spin that is free counts on without a jump.
void SeamSearch::TakeTurns(SeamWay& way) const {
    constexpr double Turn = 2 * std::numbers::pi;
    if (!choices.AnySpin()) {
        return;
    }
    for (std::size_t i = 1; i < way.stops.size(); ++i) {
        double& spin = way.stops[i].choice.spin;
        spin += Turn * std::round((way.stops[i - 1].choice.spin - spin) / Turn);
    }
}

SeamWay SeamSearch::Run() const {
    for (double look = FirstLook; look <= LastLook; look *= MoreLook) {
        const Thinning thinning = ThinnedTo(look);
        SeamWay way = OnGrid(thinning);
        if (!way.stops.empty() && Refine(way, thinning)) {
            Relax(way);
            return way;
        }
        if (IsWhole(thinning)) {
            break;
        }
    }
    return {};
}

} // namespace planning
