#include "CoupledSearch.h"

#include <algorithm>
#include <numbers>

namespace planning {

namespace {

constexpr double Turn = 2 * std::numbers::pi;
/// The discriminant is about 1 at most; this close to zero the two labels differ by 1e-5.
constexpr double AtEnd = 1e-10;

void CloseBoth(const CoupledArm& arm, const CoupledPose& pose, const WristAt& wrist, const NullSpace& space,
               int label, Branch* branches) {
    double* x = branches[0].x;
    DirectionOf(space, label, x);
    for (int i = 0; i < 4; ++i) {
        branches[1].x[i] = -x[i];
    }
    const BothSenses senses = SensesOf(pose, wrist, x);
    Close(arm, pose, wrist, senses, 1, branches[0]);
    Close(arm, pose, wrist, senses, -1, branches[1]);
}

} // namespace

Stations::Stations(const CoupledArm& arm_, const CoupledPose& pose_) : arm(arm_), pose(pose_) {
    for (std::size_t i = 0; i < CoupledNodes; ++i) {
        Station& station = items[i];
        station.q = CoupledArm::NodeOf(i);
        station.end = false;
        Fill(station, arm.nodes[i]);
        order[i] = static_cast<std::uint8_t>(i);
    }
    count = CoupledNodes;
    for (std::size_t i = 0; i < CoupledNodes; ++i) {
        const Station& a = items[i];
        const Station& b = items[(i + 1) % CoupledNodes];
        const double after = a.q + Turn / CoupledNodes;
        if (a.real && !b.real) {
            AddEndBetween(a.q, after, a.discriminant, b.discriminant);
        } else if (!a.real && b.real) {
            AddEndBetween(after, a.q, b.discriminant, a.discriminant);
        }
        SplitWhereItCrosses(i);
    }
}

void Stations::Fill(Station& station, const WristAt& wrist) const {
    NullSpace space = NullSpaceOf(pose, wrist);
    space.discriminant = station.end ? 0 : space.discriminant;
    station.discriminant = space.discriminant;
    station.real = station.end || space.discriminant > 0;
    if (station.real) {
        CloseBoth(arm, pose, wrist, space, 0, station.branches[0]);
        CloseBoth(arm, pose, wrist, space, 1, station.branches[1]);
    }
}

double Stations::Discriminant(double q) const { return NullSpaceOf(pose, arm.At(q)).discriminant; }

void Stations::Insert(std::size_t item) {
    std::size_t place = count++;
    for (; place > 0 && items[order[place - 1]].q > items[item].q; --place) {
        order[place] = order[place - 1];
    }
    order[place] = static_cast<std::uint8_t>(item);
}

void Stations::Add(double q, bool end) {
    if (count == Most) {
        return;
    }
    Station& station = items[count];
    station.q = q < items[0].q ? q + Turn : q;
    station.end = end;
    Fill(station, arm.At(q));
    Insert(count);
}

void Stations::AddEndBetween(double real, double complex, double atReal, double atComplex) {
    constexpr int Steps = 40;
    Bracket bracket{complex, atComplex, real, atReal};
    double end = real;
    for (int step = 0; step < Steps && std::abs(bracket.atB) > AtEnd; ++step) {
        end = bracket.Between();
        bracket.Take(end, Discriminant(end));
    }
    Add(end, true);
    // Near its end a branch changes with the square root of the distance.
    Add(end + (real - end) / 4, false);
}

// Between evenly spaced stations of equal sign the discriminant may still cross zero twice, where the middle
// of three is nearest to zero: searches for its extremum until it crosses or cannot do so.
void Stations::SplitWhereItCrosses(std::size_t nearest) {
    constexpr double Golden = 0.381966;
    constexpr double Narrow = 1e-7;
    constexpr double FarFromZero = 0.9;
    const Station& middle = items[nearest];
    const double sign = middle.real ? 1 : -1;
    const double before = sign * items[(nearest + CoupledNodes - 1) % CoupledNodes].discriminant;
    const double after = sign * items[(nearest + 1) % CoupledNodes].discriminant;
    double b = middle.q;
    double a = b - Turn / CoupledNodes;
    double c = b + Turn / CoupledNodes;
    double fa = before;
    double fb = sign * middle.discriminant;
    double fc = after;
    if (!(fb <= fa && fb <= fc && fb < FarFromZero * std::max(fa, fc))) {
        return;
    }
    while (c - a > Narrow) {
        const bool left = b - a > c - b;
        const double q = left ? b - Golden * (b - a) : b + Golden * (c - b);
        const double now = sign * Discriminant(q);
        if (now < 0) {
            const double around[2][2] = {{a, fa}, {c, fc}};
            for (const auto& [outer, value] : around) {
                if (middle.real) {
                    AddEndBetween(left == (outer == a) ? outer : b, q, left == (outer == a) ? value : fb,
                                  now);
                } else {
                    AddEndBetween(q, left == (outer == a) ? outer : b, -now,
                                  left == (outer == a) ? -value : -fb);
                }
            }
            return;
        }
        if (now < fb) {
            (left ? c : a) = b;
            (left ? fc : fa) = fb;
            b = q;
            fb = now;
        } else {
            (left ? a : c) = q;
            (left ? fa : fc) = now;
        }
        // Where the curve is convex, the chords of one side are a bound on the other side.
        if (fb > (fa - fb) * (c - b) / (b - a) && fb > (fc - fb) * (b - a) / (c - b)) {
            return;
        }
    }
}

} // namespace planning
