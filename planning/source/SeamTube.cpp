#include "SeamSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>

// From the best way of a grid to a smooth one: tubes of choices around it, searched again, then each choice
// between its neighbours.

namespace planning {

namespace {

/// A tube is searched in at most so many dimensions at once: three values in each.
constexpr std::size_t DimsAtOnce = 3;
/// The search is done when a round takes no more than this part off the cost.
constexpr double Worthwhile = 0.01;
/// Tubes get no narrower than this part of a stated step.
constexpr double Narrowest = 1.0 / 16;
constexpr int MostRounds = 60;
constexpr int LastRounds = 2;
/// Knots are about this far apart (mm), and not fewer than this.
constexpr double KnotLength = 1;
constexpr std::size_t FewestKnots = 100;
constexpr int MostSweeps = 25;
constexpr double WorthASweep = 1e-3;

std::vector<std::vector<std::size_t>> Subsets(const std::vector<std::size_t>& dims) {
    std::vector<std::vector<std::size_t>> sets;
    for (std::size_t i = 0; i < dims.size(); i += DimsAtOnce) {
        // From the last ones on: outer axes with each other, tilts with each other.
        const std::size_t end = dims.size() - i;
        const std::size_t begin = end > DimsAtOnce ? end - DimsAtOnce : 0;
        sets.emplace_back(dims.begin() + static_cast<std::ptrdiff_t>(begin),
                          dims.begin() + static_cast<std::ptrdiff_t>(end));
    }
    return sets;
}

Choice Blend(const Choice& a, const Choice& b, double t) {
    Choice blend = a;
    for (std::size_t dim = 0; dim < MaxDims; ++dim) {
        Dim(blend, dim) += t * (Dim(b, dim) - Dim(a, dim));
    }
    return blend;
}

} // namespace

SeamWay SeamSearch::Spread(const SeamWay& way, const std::vector<std::size_t>& looked) const {
    const SeamLine& line = choices.Line();
    SeamWay spread;
    spread.cost = std::numeric_limits<double>::infinity();
    std::size_t at = 0;
    for (const std::size_t pose : looked) {
        while (way.stops[at].pose < pose && way.stops[at + 1].pose <= pose) {
            ++at;
        }
        const SeamStop& stop = way.stops[at];
        for (; at < way.stops.size() && way.stops[at].pose == pose; ++at) {
            spread.stops.push_back(way.stops[at]);
        }
        if (stop.pose == pose) {
            --at;
            continue;
        }
        const SeamStop& next = way.stops[at + 1];
        const double t = (line.At(pose) - line.At(stop.pose)) / Between(stop.pose, next.pose);
        Choice between = Blend(stop.choice, next.choice, t);
        choices.Admit(pose, between);
        spread.stops.push_back({pose, between, {}, stop.group, 0});
    }
    return spread;
}

SeamWay SeamSearch::InTube(const SeamWay& about, const std::vector<std::size_t>& looked, const Dims& dims,
                           const Widths& by) const {
    std::vector<std::vector<Choice>> tried(looked.size());
    std::vector<SeamRung> kept(looked.size());
    Ladder ladder;
    std::size_t i = 0;
    for (std::size_t k = 0; k < looked.size(); ++k) {
        const std::size_t pose = looked[k];
        SeamRung& rung = kept[k];
        std::vector<Choice>& tube = tried[k];
        // Two stops at one pose are searched together.
        for (; i < about.stops.size() && about.stops[i].pose == pose; ++i) {
            const std::size_t before = tube.size();
            const std::size_t choicesBefore = rung.choice.size();
            choices.Tube(pose, about.stops[i].choice, dims, by, tube);
            rungs.Add(pose, std::span(tube).subspan(before), Share(looked, k), about.stops[i].group, rung);
            for (std::size_t c = choicesBefore; c < rung.choice.size(); ++c) {
                rung.choice[c] += static_cast<std::uint32_t>(before);
            }
        }
        const std::size_t strides = k > 0 ? pose - looked[k - 1] : 1;
        if (ladder.Append(rung.rung, k > 0 ? Between(looked[k - 1], pose) : 1,
                          rungs.Steps(static_cast<double>(strides))) == 0) {
            return {};
        }
        if (poses[pose].mayChange) {
            ladder.AllowChange(rungs.Rules().costs.change);
        }
    }
    SeamWay way{{}, ladder.Cost()};
    for (const Ladder::Stop& stop : ladder.Way()) {
        const SeamRung& rung = kept[stop.rung];
        way.stops.push_back(
            Stop(looked[stop.rung], tried[stop.rung][rung.choice[stop.candidate]], rung, stop.candidate));
    }
    return way;
}

void SeamSearch::Narrow(SeamWay& way, const std::vector<std::size_t>& looked, const Widths& coarse,
                        double part, int rounds) const {
    const auto sets = Subsets(choices.Varying());
    for (int round = 0; round < rounds && part >= Narrowest; ++round) {
        const double before = way.cost;
        Widths by{};
        for (const std::size_t dim : choices.Varying()) {
            by[dim] = choices.Step(dim) * coarse[dim] * part;
        }
        for (const Dims& dims : sets.empty() ? std::vector<Dims>{{}} : sets) {
            SeamWay found = InTube(way, looked, dims, by);
            if (!found.stops.empty() && found.cost <= way.cost) {
                way = std::move(found);
            }
        }
        if (!(way.cost < (1 - Worthwhile) * before)) {
            part /= 2;
        }
    }
}

/// A coarse grid's way goes in steps that the axes cannot make at once: each becomes a ramp as long as it
/// takes.
void SeamSearch::Ramp(SeamWay& way, const Thinning& thinning, double stride) const {
    const StepRules rules = rungs.Steps(stride);
    const std::size_t joints = rules.limits.size() - choices.Outer();
    double longest = 0; // in stops
    for (const std::size_t dim : choices.Varying()) {
        const double limit = rules.limits[dim >= Tilts ? joints + dim - Tilts : joints - 1];
        const double step = choices.Step(dim) * thinning.coarse[dim];
        longest = dim == 3 ? longest : std::max(longest, step > limit ? step / limit : 0);
    }
    const auto radius = static_cast<std::ptrdiff_t>(std::ceil(longest));
    const auto count = static_cast<std::ptrdiff_t>(way.stops.size());
    for (int pass = 0; pass < 2 && radius > 0; ++pass) {
        const std::vector<SeamStop> before = way.stops;
        const auto at = [&](std::ptrdiff_t i) -> const SeamStop& {
            return before[static_cast<std::size_t>(i)];
        };
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            // As far to both sides, so that the ends stay.
            std::ptrdiff_t reach = 0;
            while (reach < radius && i - reach > 0 && i + reach + 1 < count &&
                   at(i - reach - 1).group == at(i).group && at(i + reach + 1).group == at(i).group) {
                ++reach;
            }
            Choice& choice = way.stops[static_cast<std::size_t>(i)].choice;
            for (const std::size_t dim : choices.Varying()) {
                double sum = 0;
                for (std::ptrdiff_t j = i - reach; j <= i + reach; ++j) {
                    sum += Dim(at(j).choice, dim);
                }
                Dim(choice, dim) = sum / static_cast<double>(2 * reach + 1);
            }
            choices.Admit(at(i).pose, choice);
        }
    }
}

bool SeamSearch::Refine(SeamWay& way, const Thinning& thinning) const {
    // Poses that lie close are first held between knots: a step of the narrowest tube would be a jump there.
    Thinning knots{thinning.stride, {}};
    const double spacing = choices.Line().Total() / static_cast<double>(poses.size() - 1);
    while (spacing * static_cast<double>(knots.stride) < KnotLength &&
           poses.size() / knots.stride > FewestKnots) {
        knots.stride *= 2;
    }
    const std::vector<std::size_t> looked = PosesOf(knots);
    if (!IsWhole(thinning) || looked.size() != poses.size()) {
        way = Spread(way, looked);
        Ramp(way, thinning, static_cast<double>(knots.stride));
    }
    const double widest = *std::max_element(thinning.coarse.begin(), thinning.coarse.end());
    Widths coarse{};
    for (std::size_t dim = 0; dim < MaxDims; ++dim) {
        coarse[dim] = thinning.coarse[dim] / widest;
    }
    Narrow(way, looked, coarse, widest / 2, MostRounds);
    if (!std::isfinite(way.cost)) {
        return false;
    }
    if (looked.size() != poses.size()) {
        way = Spread(way, all);
        Narrow(way, all, coarse, 0.25, LastRounds);
    }
    return std::isfinite(way.cost);
}

double SeamSearch::StopCost(const SeamWay& way, std::size_t i, const SeamStop& stop,
                            const StepRules& rules) const {
    double cost = stop.cost;
    if (i > 0) {
        const SeamStop& before = way.stops[i - 1];
        cost += StepCost(rules, before.values.data(), stop.values.data(), Between(before.pose, stop.pose));
    }
    if (i + 1 < way.stops.size()) {
        const SeamStop& after = way.stops[i + 1];
        cost += StepCost(rules, stop.values.data(), after.values.data(), Between(stop.pose, after.pose));
    }
    return cost;
}

bool SeamSearch::RelaxStop(SeamWay& way, std::size_t i, const StepRules& rules) const {
    SeamStop& stop = way.stops[i];
    Choice middle = stop.choice;
    if (i > 0 && i + 1 < way.stops.size()) {
        const SeamStop& before = way.stops[i - 1];
        const SeamStop& after = way.stops[i + 1];
        if (before.pose == stop.pose || after.pose == stop.pose) {
            return false;
        }
        const double share = Between(before.pose, stop.pose) /
                             (Between(before.pose, stop.pose) + Between(stop.pose, after.pose));
        middle = Blend(before.choice, after.choice, share);
    } else {
        middle = way.stops[i > 0 ? i - 1 : i + 1].choice;
    }
    const double now = StopCost(way, i, stop, rules);
    SeamRung rung;
    for (const double t : {1.0, 0.4}) {
        Choice choice = Blend(stop.choice, middle, t);
        if (!choices.Admit(stop.pose, choice)) {
            continue;
        }
        rung.Clear();
        rungs.Add(stop.pose, {&choice, 1}, Share(all, stop.pose), stop.group, rung);
        for (std::size_t c = 0; c < rung.rung.size(); ++c) {
            SeamStop other = Stop(stop.pose, choice, rung, c);
            if (StopCost(way, i, other, rules) < now) {
                stop = std::move(other);
                return true;
            }
        }
    }
    return false;
}

void SeamSearch::Relax(SeamWay& way) const {
    const StepRules rules = rungs.Steps(1);
    const auto sum = [&] {
        double total = 0;
        for (std::size_t i = 0; i < way.stops.size(); ++i) {
            total += way.stops[i].cost;
            if (i > 0 && way.stops[i - 1].pose != way.stops[i].pose) {
                total += StepCost(rules, way.stops[i - 1].values.data(), way.stops[i].values.data(),
                                  Between(way.stops[i - 1].pose, way.stops[i].pose));
            }
        }
        return total;
    };
    double before = sum();
    for (int sweep = 0; sweep < MostSweeps && !choices.Varying().empty(); ++sweep) {
        for (std::size_t k = 0; k < way.stops.size(); ++k) {
            RelaxStop(way, sweep % 2 == 0 ? k : way.stops.size() - 1 - k, rules);
        }
        const double after = sum();
        const bool worth = after < (1 - WorthASweep) * before;
        before = after;
        if (!worth) {
            break;
        }
    }
    way.cost = before;
}

} // namespace planning
