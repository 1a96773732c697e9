#include "SeamChoices.h"

#include <algorithm>
#include <host/tools/TextHandle.h>
#include <stdexcept>

namespace planning {

namespace {

using Kind = AxisFreedom::Kind;

constexpr double Turn = 2 * std::numbers::pi;
constexpr double Rounding = 1e-9;
constexpr double AxisStep = 10 * DegreeInRadians;
constexpr double SlideStep = 50;

[[noreturn]] void Refuse(const std::string& place, double value, const std::string& expected) {
    throw std::invalid_argument(place + ": " + TextHandle::Shortest(value) + ", expected " + expected);
}

/// Values of a tolerance that many steps apart, the nominal one among them.
template <typename Each>
void EachValue(const Tolerance& t, double coarse, bool round, Each&& each) {
    const double step = t.step * coarse;
    if (round) {
        const int count = std::max(1, static_cast<int>(std::lround(Turn / step)));
        for (int k = 0; k < count; ++k) {
            each(t.nominal + Turn * k / count);
        }
        return;
    }
    const int below = static_cast<int>(std::ceil(t.below / step - Rounding));
    const int above = static_cast<int>(std::ceil(t.above / step - Rounding));
    for (int k = -below; k <= above; ++k) {
        each(t.nominal + (k < 0 ? t.below * k / below : k > 0 ? t.above * k / above : 0.0));
    }
}

} // namespace

double& Dim(Choice& choice, std::size_t dim) {
    switch (dim) {
    case 0:
        return choice.spin;
    case 1:
        return choice.lead;
    case 2:
        return choice.work;
    case 3:
        return choice.stickOut;
    default:
        return choice.outer[dim - Tilts];
    }
}

double Dim(const Choice& choice, std::size_t dim) { return Dim(const_cast<Choice&>(choice), dim); }

SeamChoices::SeamChoices(const CarriedArm& arm_, const Rigid& work_, const SeamFreedom& freedom_,
                         const SeamLine& line_)
    : arm(arm_), work(work_), freedom(freedom_), line(line_) {
    TakeTilt(0, freedom.spin, "spin");
    TakeTilt(1, freedom.lead, "lead");
    TakeTilt(2, freedom.work, "work angle");
    TakeTilt(3, freedom.stickOut, "stick-out");
    TakeAxes(arm.Carrier(), freedom.carrier, "carrier");
    TakeAxes(arm.Holder(), freedom.holder, "holder");
    if (!(freedom.downhand > 0)) {
        Refuse("downhand angle", freedom.downhand, "a number above 0");
    }
    if (turned.size() > 2) {
        Refuse("downhand axes", static_cast<double>(turned.size()), "at most 2");
    }
    if (!turned.empty()) {
        std::vector<std::size_t> positions;
        for (const std::size_t axis : turned) {
            positions.push_back(axis - CarrierAxes());
        }
        downhand.emplace(arm.Holder(), work, positions);
    }
}

void SeamChoices::TakeTilt(std::size_t dim, const Tolerance& tolerance, const char* name) {
    const std::string place(name);
    if (!std::isfinite(tolerance.nominal)) {
        Refuse(place, tolerance.nominal, "a finite number");
    }
    for (const double off : {tolerance.below, tolerance.above}) {
        if (!(off >= 0 && std::isfinite(off))) {
            Refuse(place + " tolerance", off, "a number that is not negative");
        }
    }
    if (!(tolerance.step > 0)) {
        Refuse(place + " step", tolerance.step, "a number above 0");
    }
    tilts[dim] = tolerance;
    steps[dim] = tolerance.step;
    if (tolerance.below + tolerance.above > 0) {
        varying.push_back(dim);
    }
}

AxisFreedom SeamChoices::Bounded(const CarrierChain& chain, const AxisFreedom& wanted, std::size_t axis,
                                 const std::string& place) const {
    AxisFreedom bounded = wanted;
    const auto& [low, high] = chain.Limit(axis);
    if (wanted.kind == Kind::Downhand && (&chain != &arm.Holder() || chain.Slides(axis))) {
        throw std::invalid_argument(place + ": downhand, expected an axis of the holder that turns");
    }
    if (wanted.kind == Kind::Fixed || wanted.kind == Kind::Linear) {
        bounded.to = wanted.kind == Kind::Fixed ? wanted.from : wanted.to;
        for (const double value : {bounded.from, bounded.to}) {
            if (!(value >= low - Rounding && value <= high + Rounding)) {
                Refuse(place, value,
                       TextHandle::Shortest(low) + " to " + TextHandle::Shortest(high) + ", its limits");
            }
        }
        return bounded;
    }
    bounded.low = std::max(wanted.low, low);
    bounded.high = std::min(wanted.high, high);
    bounded.step = wanted.step != 0 ? wanted.step : chain.Slides(axis) ? SlideStep : AxisStep;
    if (!(bounded.low <= bounded.high)) {
        throw std::invalid_argument(place + ": " + TextHandle::Shortest(wanted.low) + " to " +
                                    TextHandle::Shortest(wanted.high) + ", expected a range within " +
                                    TextHandle::Shortest(low) + " to " + TextHandle::Shortest(high));
    }
    if (!(bounded.step > 0)) {
        Refuse(place + " step", wanted.step, "a number above 0");
    }
    return bounded;
}

void SeamChoices::TakeAxes(const CarrierChain& chain, const std::vector<AxisFreedom>& wanted,
                           const char* name) {
    if (!wanted.empty() && wanted.size() != chain.Axes()) {
        throw std::invalid_argument(std::string(name) + ": freedom of " + std::to_string(wanted.size()) +
                                    " axes, expected " + std::to_string(chain.Axes()));
    }
    for (std::size_t i = 0; i < chain.Axes(); ++i) {
        if (axes.size() == MaxOuter) {
            Refuse("axes of carrier and holder", MaxOuter + 1, "at most " + std::to_string(MaxOuter));
        }
        const AxisFreedom one = wanted.empty() ? AxisFreedom{} : wanted[i];
        axes.push_back(Bounded(chain, one, i, std::string(name) + " axis " + std::to_string(i + 1)));
        const std::size_t dim = Tilts + axes.size() - 1;
        if (one.kind == Kind::Free || one.kind == Kind::Downhand) {
            varying.push_back(dim);
            steps[dim] = axes.back().step;
        }
        if (one.kind == Kind::Downhand) {
            turned.push_back(axes.size() - 1);
        }
    }
}

double SeamChoices::ValueAt(std::size_t pose, std::size_t axis) const {
    return axes[axis].from + (axes[axis].to - axes[axis].from) * line.At(pose) / line.Total();
}

bool SeamChoices::AnySpin() const { return freedom.spin.below + freedom.spin.above > Turn - Rounding; }

double SeamChoices::Count(std::size_t dim) const {
    if (dim < Tilts) {
        return 1 + (tilts[dim].below + tilts[dim].above) / steps[dim];
    }
    const AxisFreedom& axis = axes[dim - Tilts];
    double range = axis.high - axis.low;
    if (axis.kind == Kind::Downhand) {
        // The second of two axes that turn the seam up leaves the first one little.
        range = std::min(range, 4 * freedom.downhand);
    } else if (Slides(dim - Tilts)) {
        // Of a long rail a pose can use what the arm reaches from.
        range = std::min(range, 2 * arm.Arm().Reach());
    }
    return 1 + range / steps[dim];
}

double SeamChoices::OffVertical(std::size_t pose, const Choice& choice) const {
    return AngleToVertical(arm.Holder(), work, line.Up(pose),
                           std::span(choice.outer).subspan(CarrierAxes(), arm.Holder().Axes()));
}

void SeamChoices::AddDownhand(std::size_t pose, const Coarseness& coarse, std::vector<Choice>& choices,
                              std::size_t& left) const {
    std::vector<Downhand::Axis> bounds;
    for (const std::size_t axis : turned) {
        bounds.push_back({axes[axis].low, axes[axis].high, axes[axis].step * coarse[Tilts + axis]});
    }
    std::vector<Choice> all;
    std::vector<std::array<double, 2>> pairs;
    for (const Choice& choice : choices) {
        std::vector<double> values(choice.outer.begin() + static_cast<std::ptrdiff_t>(CarrierAxes()),
                                   choice.outer.begin() + static_cast<std::ptrdiff_t>(axes.size()));
        pairs.clear();
        downhand->Values(line.Up(pose), values, freedom.downhand, bounds, pairs);
        for (const auto& pair : pairs) {
            Choice& one = all.emplace_back(choice);
            for (std::size_t k = 0; k < turned.size(); ++k) {
                one.outer[turned[k]] = pair[k];
            }
        }
        left += static_cast<std::size_t>(pairs.empty());
    }
    choices = std::move(all);
}

std::size_t SeamChoices::OuterGrid(std::size_t pose, const Coarseness& coarse,
                                   std::vector<Choice>& out) const {
    Choice first;
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        first.outer[axis] = ValueAt(pose, axis);
    }
    out = {first};
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        if (axes[axis].kind != Kind::Free) {
            continue;
        }
        const double range = axes[axis].high - axes[axis].low;
        const int parts =
            static_cast<int>(std::ceil(range / (axes[axis].step * coarse[Tilts + axis]) - Rounding));
        std::vector<Choice> more;
        for (const Choice& choice : out) {
            for (int k = 0; k <= parts; ++k) {
                more.push_back(choice);
                more.back().outer[axis] = axes[axis].low + (parts > 0 ? range * k / parts : 0);
            }
        }
        out = std::move(more);
    }
    std::size_t left = 0;
    if (downhand) {
        AddDownhand(pose, coarse, out, left);
    }
    return left;
}

std::size_t SeamChoices::Grid(std::size_t pose, const Coarseness& coarse, std::vector<Choice>& out) const {
    std::vector<Choice> outer;
    const std::size_t left = OuterGrid(pose, coarse, outer);
    out.clear();
    for (Choice choice : outer) {
        EachValue(tilts[3], coarse[3], false, [&](double stickOut) {
            choice.stickOut = stickOut;
            EachValue(tilts[2], coarse[2], false, [&](double workAngle) {
                choice.work = workAngle;
                EachValue(tilts[1], coarse[1], false, [&](double lead) {
                    choice.lead = lead;
                    EachValue(tilts[0], coarse[0], AnySpin(), [&](double spin) {
                        // Any spin: the same turns of the tool at every pose.
                        choice.spin = AnySpin() ? spin : spin + line.Twist(pose);
                        out.push_back(choice);
                    });
                });
            });
        });
    }
    return left;
}

bool SeamChoices::Admit(std::size_t pose, Choice& choice) const {
    for (std::size_t dim = AnySpin() ? 1 : 0; dim < Tilts; ++dim) {
        const double shift = dim == 0 ? line.Twist(pose) : 0;
        const Tolerance& t = tilts[dim];
        Dim(choice, dim) =
            std::clamp(Dim(choice, dim), t.nominal - t.below + shift, t.nominal + t.above + shift);
    }
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        const bool given = axes[axis].kind == Kind::Fixed || axes[axis].kind == Kind::Linear;
        choice.outer[axis] =
            given ? ValueAt(pose, axis) : std::clamp(choice.outer[axis], axes[axis].low, axes[axis].high);
    }
    if (!downhand || OffVertical(pose, choice) <= freedom.downhand) {
        return true;
    }
    const AxisFreedom& first = axes[turned.front()];
    const auto holder = std::span(choice.outer).subspan(CarrierAxes(), arm.Holder().Axes());
    return downhand->Project(line.Up(pose), holder, freedom.downhand, {first.low, first.high, first.step});
}

void SeamChoices::Tube(std::size_t pose, const Choice& about, const std::vector<std::size_t>& dims,
                       const std::array<double, MaxDims>& by, std::vector<Choice>& out) const {
    int count = 1;
    for (std::size_t k = 0; k < dims.size(); ++k) {
        count *= 3;
    }
    for (int number = 0; number < count; ++number) {
        Choice choice = about;
        int rest = number;
        for (const std::size_t dim : dims) {
            Dim(choice, dim) += (rest % 3 - 1) * by[dim];
            rest /= 3;
        }
        if (Admit(pose, choice)) {
            out.push_back(choice);
        }
    }
}

} // namespace planning
