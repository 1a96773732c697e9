#include <planning/SeamMotion.h>

#include "SeamBetween.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace planning {

namespace {

using Leg = MotionState::Leg;

/// On the way to and from a seam no joint turns by more (rad): the shape stays.
constexpr double SameShape = 1;

/// A seam's plan in one direction, with the states before and after it.
struct Variant {
    SeamResult plan;
    std::vector<SeamState> approach;
    std::vector<SeamState> retract;
    bool reversed = false;
    std::size_t before = 0; ///< variant of the seam before that it continues
    double total = 0;       ///< cost of all up to here, ways through the air included

    const std::vector<double>& First() const {
        return (approach.empty() ? plan.states : approach).front().values;
    }
    const std::vector<double>& Last() const {
        return (retract.empty() ? plan.states : retract).back().values;
    }
};

class Builder {
public:
    Builder(const SeamPlanner& planner_, const SeamTask& task_)
        : planner(planner_), task(task_), between(planner.Arm(), planner.Rules()) {}

    SeamMotion Build() {
        Require(task.start, "start");
        Require(task.end, "end");
        for (const auto& keys : task.air) {
            for (const auto& key : keys) {
                Require(key, "air");
            }
        }
        for (std::size_t k = 0; k < task.seams.size(); ++k) {
            if (!PlanSeam(k)) {
                return motion;
            }
        }
        ChooseDirections();
        for (std::size_t k = 0; k < task.seams.size(); ++k) {
            AddSeam(k);
        }
        if (!task.air.empty() && task.air.size() > task.seams.size()) {
            AddAir(task.air.back(), task.seams.size());
        }
        if (!task.end.empty()) {
            AddAir({task.end}, task.seams.size());
        }
        return std::move(motion);
    }

private:
    void Require(const std::vector<double>& values, const char* place) const {
        if (!values.empty() && values.size() != planner.Axes()) {
            throw std::invalid_argument(std::string(place) + ": " + std::to_string(values.size()) +
                                        " values, expected " + std::to_string(planner.Axes()));
        }
    }

    /// Plans a seam on from every variant of the one before; of each direction the cheapest is kept.
    bool PlanSeam(std::size_t k) {
        auto& kept = variants.emplace_back();
        for (const bool reversed : {false, true}) {
            if (reversed && !task.eitherWay) {
                break;
            }
            const Seam seam = reversed ? Reversed(task.seams[k]) : task.seams[k];
            std::optional<Variant> best;
            for (std::size_t j = 0; j < (k > 0 ? variants[k - 1].size() : 1); ++j) {
                Variant variant = PlanFrom(seam, k, j);
                if (variant.plan.Found() && (!best || variant.total < best->total)) {
                    variant.reversed = reversed;
                    best = std::move(variant);
                } else if (!variant.plan.Found() && !reversed) {
                    motion.why = variant.plan.why;
                }
            }
            if (best) {
                kept.push_back(std::move(*best));
            }
        }
        motion.blocked = k;
        return !kept.empty();
    }

    Variant PlanFrom(const Seam& seam, std::size_t k, std::size_t j) const {
        const std::vector<double>& from = k > 0 ? variants[k - 1][j].Last() : task.start;
        Variant variant;
        try {
            variant.plan = planner.Plan(seam, from);
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("seam " + std::to_string(k) + ": " + error.what());
        }
        if (variant.plan.Found() && !AddWays(seam, variant)) {
            variant.plan.states.clear();
        }
        if (variant.plan.Found()) {
            variant.before = j;
            variant.total =
                (k > 0 ? variants[k - 1][j].total : 0) + AirCost(from, variant.First()) + variant.plan.cost;
        }
        return variant;
    }

    /// The straight ways to and from a seam.
    bool AddWays(const Seam& seam, Variant& variant) const {
        Deviation most{variant.plan.distance, variant.plan.angle};
        const auto away = [&](const SeamState& state, double back) {
            Rigid shift;
            shift.p[2] = -back;
            SeamState far;
            far.tool = state.tool * shift;
            far.values = between.Solve(far.tool, state.values, SameShape);
            return far;
        };
        if (seam.approach > 0) {
            const SeamState& first = variant.plan.states.front();
            variant.approach = {away(first, seam.approach)};
            if (variant.approach.front().values.empty()) {
                variant.plan.why.approach = 1;
                return false;
            }
            between.Append(variant.approach, first, most);
            variant.approach.pop_back();
        }
        if (seam.retract > 0) {
            variant.retract = {variant.plan.states.back()};
            const SeamState far = away(variant.retract.front(), seam.retract);
            if (far.values.empty()) {
                variant.plan.why.pose = seam.poses.size() - 1;
                variant.plan.why.approach = 1;
                return false;
            }
            between.Append(variant.retract, far, most);
            variant.retract.erase(variant.retract.begin());
        }
        variant.plan.distance = most.distance;
        variant.plan.angle = most.angle;
        return true;
    }

    double AirCost(const std::vector<double>& from, const std::vector<double>& to) const {
        const std::vector<double> weights = StepWeights(planner.Arm(), planner.Rules());
        double sum = 0;
        for (std::size_t i = 0; i < std::min(from.size(), to.size()); ++i) {
            sum += weights[i] * (to[i] - from[i]) * (to[i] - from[i]);
        }
        return planner.Rules().costs.start * sum;
    }

    /// Goes back from the cheapest end.
    void ChooseDirections() {
        chosen.resize(variants.size());
        const auto& last = variants.back();
        const auto least = std::min_element(
            last.begin(), last.end(), [](const Variant& a, const Variant& b) { return a.total < b.total; });
        auto at = static_cast<std::size_t>(least - last.begin());
        for (std::size_t k = variants.size(); k-- > 0;) {
            chosen[k] = at;
            at = variants[k][at].before;
        }
    }

    void AddSeam(std::size_t k) {
        const Variant& variant = variants[k][chosen[k]];
        if (k == 0 && !task.start.empty()) {
            motion.states.push_back({task.start, Leg::Air, 0, -1});
        }
        std::vector<std::vector<double>> keys = k < task.air.size() ? task.air[k] : decltype(keys){};
        keys.push_back(variant.First());
        AddAir(keys, k);
        // The first state of the seam's own ways is where the air move has ended.
        motion.states.pop_back();
        const auto last = static_cast<int>(task.seams[k].poses.size()) - 1;
        const auto add = [&](const std::vector<SeamState>& states, Leg leg) {
            for (const SeamState& state : states) {
                const bool place = leg == Leg::Work && state.pose >= 0;
                const int pose = !place ? -1 : variant.reversed ? last - state.pose : state.pose;
                if (leg == Leg::Work && state.changed) {
                    AddChange(k, state);
                }
                motion.states.push_back({state.values, leg, k, pose});
            }
        };
        add(variant.approach, Leg::Approach);
        add(variant.plan.states, Leg::Work);
        add(variant.retract, Leg::Retract);
        motion.reversed.push_back(variant.reversed);
        motion.distance = std::max(motion.distance, variant.plan.distance);
        motion.angle = std::max(motion.angle, variant.plan.angle);
        motion.cost += variant.plan.cost;
    }

    /// Off the seam, into the other configuration, and back to the same place.
    void AddChange(std::size_t k, const SeamState& state) {
        const double back = std::max(task.seams[k].retract, task.seams[k].approach);
        Rigid shift;
        shift.p[2] = -back;
        const auto away = [&](const std::vector<double>& values) {
            const std::vector<double> far = between.Solve(state.tool * shift, values, SameShape);
            return far.empty() ? values : far;
        };
        AddAir({away(motion.states.back().values), away(state.values), state.values}, k);
        motion.states.pop_back();
    }

    void AddAir(const std::vector<std::vector<double>>& keys, std::size_t seam) {
        const std::vector<double> limits = StepLimits(planner.Arm(), planner.Rules());
        for (const std::vector<double>& key : keys) {
            if (motion.states.empty()) {
                motion.states.push_back({key, Leg::Air, seam, -1});
                continue;
            }
            const std::vector<double> from = motion.states.back().values;
            double most = 1;
            for (std::size_t i = 0; i < key.size(); ++i) {
                most = std::max(most, std::ceil(std::abs(key[i] - from[i]) / limits[i] - 1e-9));
            }
            for (int step = 1; step <= most; ++step) {
                std::vector<double> values(key.size());
                for (std::size_t i = 0; i < key.size(); ++i) {
                    values[i] =
                        step == static_cast<int>(most) ? key[i] : from[i] + (key[i] - from[i]) * step / most;
                }
                motion.states.push_back({values, Leg::Air, seam, -1});
            }
        }
    }

    const SeamPlanner& planner;
    const SeamTask& task;
    SeamBetween between;
    SeamMotion motion;
    std::vector<std::vector<Variant>> variants;
    std::vector<std::size_t> chosen;
};

} // namespace

Seam Reversed(const Seam& seam) {
    Seam back = seam;
    std::reverse(back.poses.begin(), back.poses.end());
    for (std::vector<AxisFreedom>* axes : {&back.freedom.carrier, &back.freedom.holder}) {
        for (AxisFreedom& axis : *axes) {
            if (axis.kind == AxisFreedom::Kind::Linear) {
                std::swap(axis.from, axis.to);
            }
        }
    }
    return back;
}

SeamMotion PlanMotion(const SeamPlanner& planner, const SeamTask& task) {
    if (task.seams.empty()) {
        throw std::invalid_argument("seams: none, expected at least 1");
    }
    return Builder(planner, task).Build();
}

} // namespace planning
