#include "SeamRungs.h"

#include "SeamBetween.h"

#include <algorithm>
#include <cmath>

namespace planning {

namespace {

constexpr double SlideMargin = 150; // mm
constexpr double Turn = 2 * std::numbers::pi;
/// All joints but the last are taken within this of where they were before the seam (rad): with limits of two
/// turns each, every shape would be there 64 times.
constexpr double FarTurn = 4;
/// Along the way to and from the seam no joint turns by more than this (rad), or the shape is another one.
constexpr double SameShape = 1;

/// Absolute value of the determinant of the arm's six columns, by elimination; lengths in units of `length`.
double Manipulability(const Jacobian& jacobian, double length) {
    double m[6][6];
    for (std::size_t i = 0; i < 6; ++i) {
        for (std::size_t k = 0; k < 6; ++k) {
            m[i][k] = jacobian.columns[i][k] / (k < 3 ? length : 1);
        }
    }
    double product = 1;
    for (std::size_t i = 0; i < 6; ++i) {
        std::size_t pivot = i;
        for (std::size_t r = i + 1; r < 6; ++r) {
            pivot = std::abs(m[r][i]) > std::abs(m[pivot][i]) ? r : pivot;
        }
        if (m[pivot][i] == 0) {
            return 0;
        }
        std::swap(m[i], m[pivot]);
        product *= m[i][i];
        for (std::size_t r = i + 1; r < 6; ++r) {
            const double f = m[r][i] / m[i][i];
            for (std::size_t k = i + 1; k < 6; ++k) {
                m[r][k] -= f * m[i][k];
            }
        }
    }
    return std::abs(product);
}

double Square(double a) { return a * a; }

} // namespace

int GroupOf(const InverseKinematics& arm, const Solution& solution) {
    if (arm.Coupled()) {
        return 0;
    }
    const Configuration& c = solution.configuration;
    return 4 * static_cast<int>(c.shoulder) + 2 * static_cast<int>(c.elbow) + static_cast<int>(c.wrist);
}

SeamRungs::SeamRungs(const CarriedArm& arm_, const SeamRules& rules_, const SeamChoices& choices_,
                     const Seam& seam, std::span<const double> from)
    : arm(arm_), rules(rules_), choices(choices_), approach(seam.approach), retract(seam.retract),
      start(from.begin(), from.end()), unlimited(arm.Arm().WithoutLimits()) {
    const SeamCosts& costs = rules.costs;
    const std::size_t joints = arm.Arm().Joints();
    for (std::size_t i = 0; i < joints; ++i) {
        limits.push_back(arm.Arm().Limit(i));
        margins.push_back(costs.limitMargin);
    }
    for (std::size_t i = 0; i < choices.Outer(); ++i) {
        const bool carried = i < choices.CarrierAxes();
        const CarrierChain& chain = carried ? arm.Carrier() : arm.Holder();
        const std::size_t axis = carried ? i : i - choices.CarrierAxes();
        const bool slides = chain.Slides(axis);
        limits.push_back(chain.Limit(axis));
        margins.push_back(slides ? SlideMargin : costs.limitMargin);
    }
    steps.limits = StepLimits(arm, rules);
    steps.weights = StepWeights(arm, rules);
    for (double& weight : steps.weights) {
        weight *= costs.length;
    }
}

StepRules SeamRungs::Steps(double stride) const {
    StepRules scaled = steps;
    for (double& limit : scaled.limits) {
        limit *= stride;
    }
    return scaled;
}

Rigid SeamRungs::WorkFromBase(const Choice& choice) const {
    const auto outer = std::span(choice.outer).first(choices.Outer());
    return Inverse(arm.Carrier().FlangeAt(outer.first(choices.CarrierAxes()))) *
           arm.Holder().FlangeAt(outer.subspan(choices.CarrierAxes())) * rules.work;
}

double SeamRungs::CostOf(const Place& place, const Choice& choice) const {
    const SeamCosts& costs = rules.costs;
    const SeamFreedom& freedom = choices.Freedom();
    double cost = costs.tilt * (Square(choice.lead - freedom.lead.nominal) +
                                Square(choice.work - freedom.work.nominal)) +
                  costs.stickOut * Square(choice.stickOut - freedom.stickOut.nominal);
    if (choices.HasDownhand()) {
        cost += costs.downhand * Square(choices.OffVertical(place.pose, choice));
    }
    return cost;
}

double SeamRungs::StartCost(const double* values) const {
    double cost = 0;
    for (std::size_t i = 0; i < start.size(); ++i) {
        cost += steps.weights[i] / rules.costs.length * Square(values[i] - start[i]);
    }
    return rules.costs.start * cost;
}

double SeamRungs::LimitCost(const double* values) const {
    double cost = 0;
    for (std::size_t i = 0; i < limits.size(); ++i) {
        const auto& [low, high] = limits[i];
        if (high - low > 2 * margins[i]) {
            const double margin = std::min(values[i] - low, high - values[i]);
            cost += margin < margins[i] ? Square(1 - margin / margins[i]) : 0;
        }
    }
    return cost * rules.costs.limit;
}

void SeamRungs::Add(std::size_t pose, std::span<const Choice> from, double share, int group, SeamRung& out,
                    NoWay* why) const {
    out.rung.axes = Axes();
    Place place{pose, share / rules.costs.length, group, {}, {}, 0};
    for (std::size_t i = 0; i < from.size(); ++i) {
        const Choice& choice = from[i];
        if (i == 0 || choice.outer != from[i - 1].outer) {
            place.base = WorkFromBase(choice);
        }
        place.tool = choices.Line().ToolAt(pose, choice);
        place.cost = CostOf(place, choice);
        const Solutions solutions = arm.Arm().ToolCentre(place.base * place.tool);
        for (const Solution& solution : solutions) {
            if (group == AnyGroup || GroupOf(arm.Arm(), solution) == group) {
                AddSolution(place, choice, solution, out, why);
            }
        }
        out.choice.resize(out.rung.size(), static_cast<std::uint32_t>(i));
        if (why != nullptr) {
            CountLost(place, *why);
        }
    }
}

void SeamRungs::AddSolution(const Place& place, const Choice& choice, const Solution& solution, SeamRung& out,
                            NoWay* why) const {
    const SeamCosts& costs = rules.costs;
    const double away = Manipulability(arm.Arm().JacobianAt(solution.values), arm.Arm().Reach());
    if (away < rules.singular) {
        if (why != nullptr) {
            ++why->singular;
        }
        return;
    }
    if (!CanApproach(place, solution)) {
        if (why != nullptr) {
            ++why->approach;
        }
        return;
    }
    const double cost =
        place.cost +
        (away < costs.singularMargin ? costs.singular * Square(1 - away / costs.singularMargin) : 0);
    arm.Arm().ForEachTurn(solution, [&](const Solution& turned) {
        if (IsNear(turned)) {
            AddTurn(place, choice, turned, cost, out);
        }
    });
}

bool SeamRungs::IsNear(const Solution& turned) const {
    for (std::size_t i = 0; i + 1 < arm.Arm().Joints(); ++i) {
        const double from = start.empty() ? 0 : start[i];
        const auto& [low, high] = limits[i];
        // A joint whose limits lie apart from there keeps what it has.
        if (std::abs(turned.values[i] - from) > FarTurn && low < from - FarTurn + Turn &&
            high > from + FarTurn - Turn) {
            return false;
        }
    }
    return true;
}

void SeamRungs::AddTurn(const Place& place, const Choice& choice, const Solution& turned, double cost,
                        SeamRung& out) const {
    Rung& rung = out.rung;
    rung.values.insert(rung.values.end(), turned.values.begin(),
                       turned.values.begin() + static_cast<std::ptrdiff_t>(arm.Arm().Joints()));
    rung.values.insert(rung.values.end(), choice.outer.begin(),
                       choice.outer.begin() + static_cast<std::ptrdiff_t>(choices.Outer()));
    const double* values = rung.values.data() + rung.values.size() - rung.axes;
    rung.costs.push_back(place.share * (cost + LimitCost(values)) +
                         (place.pose == 0 ? StartCost(values) : 0));
    rung.groups.push_back(static_cast<std::uint8_t>(GroupOf(arm.Arm(), turned)));
}

bool SeamRungs::CanApproach(const Place& place, const Solution& solution) const {
    const bool first = place.pose == 0 && approach > 0;
    const bool last = place.pose + 1 == choices.Line().size() && retract > 0;
    const auto near = [&](double back) {
        Rigid away;
        away.p[2] = -back;
        const auto values = std::span(solution.values).first(arm.Arm().Joints());
        const Solutions there = arm.Arm().ToolCentre(place.base * place.tool * away, values);
        return std::any_of(there.begin(), there.end(), [&](const Solution& other) {
            double most = 0;
            for (std::size_t i = 0; i < values.size(); ++i) {
                most = std::max(most, std::abs(other.values[i] - values[i]));
            }
            return GroupOf(arm.Arm(), other) == GroupOf(arm.Arm(), solution) && most < SameShape;
        });
    };
    return (!first || near(approach)) && (!last || near(retract));
}

void SeamRungs::CountLost(const Place& place, NoWay& why) const {
    why.limits.resize(arm.Arm().Joints());
    const Solutions shapes = unlimited.ToolCentre(place.base * place.tool);
    why.reach += static_cast<std::size_t>(shapes.empty());
    for (const Solution& shape : shapes) {
        for (std::size_t i = 0; i < why.limits.size(); ++i) {
            const auto& [low, high] = arm.Arm().Limit(i);
            const double lowest = shape.values[i] + Turn * std::ceil((low - shape.values[i]) / Turn - 1e-12);
            why.limits[i] += static_cast<std::size_t>(lowest > high + 1e-9);
        }
    }
}

} // namespace planning
