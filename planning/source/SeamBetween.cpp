#include "SeamBetween.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace planning {

namespace {

constexpr double JointStep = 10 * DegreeInRadians;
constexpr double SlideStep = 50; // mm
constexpr int Samples = 24;
constexpr int MostHalvings = 12;

/// A direction part of the way from one to another, in their plane.
Vec Slerp(const Vec& a, const Vec& b, double t) {
    const double angle = std::atan2(Length(Cross(a, b)), Dot(a, b));
    if (angle < 1e-9) {
        return a;
    }
    return (1 / std::sin(angle)) * (std::sin((1 - t) * angle) * a + std::sin(t * angle) * b);
}

Rigid HalfwayTool(const Rigid& a, const Rigid& b) {
    const Vec z = Unit(Column(a, 2) + Column(b, 2));
    Vec x = Column(a, 0) + Column(b, 0);
    x = Unit(x - Dot(x, z) * z);
    return FromColumns(x, Cross(z, x), z, 0.5 * (Origin(a) + Origin(b)));
}

std::vector<double> Blend(const std::vector<double>& a, const std::vector<double>& b, double t) {
    std::vector<double> blend(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
        blend[i] = a[i] + t * (b[i] - a[i]);
    }
    return blend;
}

} // namespace

std::vector<double> StepLimits(const CarriedArm& arm, const SeamRules& rules) {
    if (!rules.steps.empty()) {
        return rules.steps;
    }
    std::vector<double> limits(arm.Arm().Joints(), JointStep);
    for (const CarrierChain* chain : {&arm.Carrier(), &arm.Holder()}) {
        for (std::size_t i = 0; i < chain->Axes(); ++i) {
            limits.push_back(chain->Slides(i) ? SlideStep : JointStep);
        }
    }
    return limits;
}

std::vector<double> StepWeights(const CarriedArm& arm, const SeamRules& rules) {
    const SeamCosts& costs = rules.costs;
    std::vector<double> weights(arm.Arm().Joints(), costs.arm);
    if (arm.Arm().Coupled()) {
        weights[5] = 0; // it is minus value 5
    }
    for (const CarrierChain* chain : {&arm.Carrier(), &arm.Holder()}) {
        for (std::size_t i = 0; i < chain->Axes(); ++i) {
            weights.push_back((chain == &arm.Carrier() ? costs.carrier : costs.holder) *
                              (chain->Slides(i) ? costs.sliding * costs.sliding : 1));
        }
    }
    return weights;
}

Deviation SeamBetween::Measure(const SeamState& a, const SeamState& b) const {
    Deviation most;
    const Rigid toWork = Inverse(rules.work);
    const Vec from = Origin(a.tool);
    const Vec leg = Origin(b.tool) - from;
    const double length = Length(leg);
    for (int k = 1; k < Samples; ++k) {
        const double t = static_cast<double>(k) / Samples;
        const std::vector<double> values = Blend(a.values, b.values, t);
        const Rigid tool = toWork * arm.ToolCentreOnWork(Split(arm, values));
        const double along =
            length > 0 ? std::clamp(Dot(Origin(tool) - from, leg) / (length * length), 0.0, 1.0) : t;
        most.distance = std::max(most.distance, Length(Origin(tool) - from - along * leg));
        const Vec axis = Slerp(Column(a.tool, 2), Column(b.tool, 2), length > 0 ? along : t);
        most.angle = std::max(most.angle,
                              std::atan2(Length(Cross(axis, Column(tool, 2))), Dot(axis, Column(tool, 2))));
    }
    return most;
}

std::vector<double> SeamBetween::Solve(const Rigid& tool, const std::vector<double>& near,
                                       double within) const {
    const AxisValues parts = Split(arm, near);
    const Solutions solutions = arm.SolveOnWork(rules.work * tool, parts);
    std::vector<double> values;
    double least = within;
    for (const Solution& solution : solutions) {
        double most = 0;
        for (std::size_t i = 0; i < parts.arm.size(); ++i) {
            most = std::max(most, std::abs(solution.values[i] - parts.arm[i]));
        }
        if (most < least) {
            least = most;
            values = near;
            std::copy_n(solution.values.begin(), parts.arm.size(), values.begin());
        }
    }
    return values;
}

SeamState SeamBetween::Halfway(const SeamState& a, const SeamState& b) const {
    double apart = 0;
    for (std::size_t i = 0; i < arm.Arm().Joints(); ++i) {
        apart = std::max(apart, std::abs(b.values[i] - a.values[i]));
    }
    SeamState half;
    half.tool = HalfwayTool(a.tool, b.tool);
    half.values = Solve(half.tool, Blend(a.values, b.values, 0.5), apart / 2 + 1e-3);
    return half;
}

bool SeamBetween::IsStep(const SeamState& a, const SeamState& b) const {
    constexpr double Rounding = 1e-12;
    for (std::size_t i = 0; i < limits.size(); ++i) {
        if (std::abs(b.values[i] - a.values[i]) > limits[i] + Rounding) {
            return false;
        }
    }
    return true;
}

void SeamBetween::Fill(std::vector<SeamState>& out, const SeamState& a, const SeamState& b, int depth,
                       Deviation& most) const {
    const Deviation here = Measure(a, b);
    const bool good = here.distance <= rules.distance && here.angle <= rules.angle && IsStep(a, b);
    if (!good && depth < MostHalvings) {
        const SeamState half = Halfway(a, b);
        if (!half.values.empty()) {
            Fill(out, a, half, depth + 1, most);
            Fill(out, half, b, depth + 1, most);
            return;
        }
    }
    most.distance = std::max(most.distance, here.distance);
    most.angle = std::max(most.angle, here.angle);
    out.push_back(b);
}

void SeamBetween::Append(std::vector<SeamState>& out, const SeamState& b, Deviation& most) const {
    if (out.empty() || b.changed) {
        out.push_back(b);
        return;
    }
    const SeamState a = out.back();
    Fill(out, a, b, 0, most);
}

} // namespace planning
