#include "CoupledSearch.h"

#include <algorithm>
#include <numbers>

namespace planning {

namespace {

constexpr double Turn = 2 * std::numbers::pi;
/// Cosine of the angle by which x and the turn of joints 2 and 3 may differ between neighbouring samples.
constexpr double Smooth = 0.8;
constexpr int DeepestHalving = 6;
/// A least value above this fraction of its larger neighbour is no candidate for a crossing.
constexpr double FarFromZero = 0.9;
constexpr double ExactLength = 3e-10; // mm
constexpr double Narrow = 1e-7;       // rad

double Dot(const Branch& a, const Branch& b) {
    return a.x[0] * b.x[0] + a.x[1] * b.x[1] + a.x[2] * b.x[2] + a.x[3] * b.x[3];
}

bool IsSmooth(const Branch& a, const Branch& b) {
    return Dot(a, b) >= 2 * Smooth && a.turn.re * b.turn.re + a.turn.im * b.turn.im >= Smooth;
}

int LabelBetween(const Sample& a, const Sample& b) { return a.end ? b.label : a.label; }

bool IsPositive(const Sample& sample) { return sample.at->tooLong > 0; }

} // namespace

Branch BranchSearch::At(double q, int label, const Branch& like) const {
    const WristAt wrist = arm.At(q);
    Branch branch;
    DirectionOf(NullSpaceOf(pose, wrist), label, branch.x);
    if (Dot(branch, like) < 0) {
        for (double& n : branch.x) {
            n = -n;
        }
    }
    Close(arm, pose, wrist, SensesOf(pose, wrist, branch.x), 1, branch);
    return branch;
}

void BranchSearch::Run(const Stations& stations) {
    std::size_t gap = 0;
    while (gap < stations.size() && stations[gap].real && !stations[gap].end) {
        ++gap;
    }
    if (gap == stations.size()) {
        FollowWhole(stations);
        return;
    }
    // Every run of stations with real branches lies between two ends.
    for (std::size_t i = gap; i < gap + stations.size(); ++i) {
        if (!stations[i].end || !stations[i + 1].real) {
            continue;
        }
        std::size_t run = 2;
        while (!stations[i + run - 1].end && run < stations.size()) {
            ++run;
        }
        FollowRun(stations, i, run);
        i += run - 2;
    }
}

void BranchSearch::Append(const Stations& stations, std::size_t i, int label, int& sense) {
    const Station& station = stations[i];
    if (length > 0) {
        sense = Dot(*chain[length - 1].at, station.branches[label][0]) >= 0 ? 0 : 1;
    }
    const double q = station.q + (i >= stations.size() ? Turn : 0);
    chain[length++] = {q, label, station.end, &station.branches[label][sense]};
}

void BranchSearch::FollowWhole(const Stations& stations) {
    for (int branch = 0; branch < 4; ++branch) {
        int sense = branch % 2;
        length = 0;
        for (std::size_t i = 0; i < stations.size() + 2; ++i) {
            Append(stations, i, branch / 2, sense);
        }
        SearchChain();
    }
}

void BranchSearch::FollowRun(const Stations& stations, std::size_t first, std::size_t run) {
    for (int start = 0; start < 2; ++start) {
        int sense = start;
        length = 0;
        for (std::size_t i = 0; i < run; ++i) {
            Append(stations, first + i, 0, sense);
        }
        for (std::size_t i = run - 1; i-- > 0;) {
            Append(stations, first + i, 1, sense);
        }
        Append(stations, first + 1, 0, sense);
        SearchChain();
    }
}

void BranchSearch::SearchChain() {
    for (std::size_t i = 0; i + 1 < length; ++i) {
        least = std::min(least, std::abs(chain[i].at->tooLong));
        // The last pair repeats the first one, which completes its triple.
        if (i + 2 < length) {
            SearchPair(chain[i], chain[i + 1], 0);
            SearchTriple(chain[i], chain[i + 1], chain[i + 2]);
        }
    }
}

void BranchSearch::SearchPair(const Sample& a, const Sample& b, int depth) {
    if (depth < DeepestHalving && !IsSmooth(*a.at, *b.at)) {
        const double q = (a.q + b.q) / 2;
        const int label = LabelBetween(a, b);
        const Branch between = At(q, label, *a.at);
        const Sample middle{q, label, false, &between};
        SearchPair(a, middle, depth + 1);
        SearchPair(middle, b, depth + 1);
        SearchTriple(a, middle, b);
    } else if (IsPositive(a) != IsPositive(b)) {
        FindRoot(a, b);
    }
}

void BranchSearch::SearchTriple(const Sample& a, const Sample& b, const Sample& c) {
    const double before = std::abs(a.at->tooLong);
    const double middle = std::abs(b.at->tooLong);
    const double after = std::abs(c.at->tooLong);
    if (middle <= before && middle <= after && middle < FarFromZero * std::max(before, after) &&
        IsPositive(a) == IsPositive(b) && IsPositive(b) == IsPositive(c)) {
        SearchDip(a, b, c);
    }
}

// Narrows a local minimum until it crosses zero, which gives two roots, or cannot do so.
void BranchSearch::SearchDip(Sample a, Sample b, Sample c) {
    constexpr double Golden = 0.381966;
    constexpr std::size_t Steps = 60;
    std::array<Branch, Steps> seen;
    for (std::size_t step = 0; step < Steps; ++step) {
        const double before = std::abs(b.q - a.q);
        const double after = std::abs(c.q - b.q);
        if (std::max(before, after) < Narrow) {
            break;
        }
        const bool left = before > after;
        const Sample& outer = left ? a : c;
        const double q = b.q + Golden * (outer.q - b.q);
        const int label = LabelBetween(b, outer);
        seen[step] = At(q, label, *b.at);
        const Sample now{q, label, false, &seen[step]};
        if (IsPositive(now) != IsPositive(b)) {
            FindRoot(left ? a : b, now);
            FindRoot(now, left ? b : c);
            return;
        }
        if (std::abs(now.at->tooLong) < std::abs(b.at->tooLong)) {
            (left ? c : a) = b;
            b = now;
        } else {
            (left ? a : c) = now;
        }
    }
    // A double root, where the arm is stretched or folded.
    found(context, b.q, *b.at);
}

void BranchSearch::FindRoot(const Sample& a, const Sample& b) {
    constexpr int Steps = 60;
    const int label = LabelBetween(a, b);
    Bracket bracket{a.q, a.at->tooLong, b.q, b.at->tooLong};
    Branch now = *a.at;
    double q = a.q;
    for (int step = 0; step < Steps && std::abs(now.tooLong) > ExactLength; ++step) {
        q = bracket.Between();
        now = At(q, label, now);
        bracket.Take(q, now.tooLong);
    }
    found(context, q, now);
}

} // namespace planning
