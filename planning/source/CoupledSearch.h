#pragma once

#include "CoupledScan.h"

namespace planning {

/// A bracket of a sign change, narrowed by regula falsi with the weights of Anderson and Bjorck.
struct Bracket {
    double a, atA, b, atB;

    /// The next place to evaluate.
    double Between() const {
        const double q = (a * atB - b * atA) / (atB - atA);
        return q > std::min(a, b) && q < std::max(a, b) ? q : (a + b) / 2;
    }
    void Take(double q, double atQ) {
        if ((atQ > 0) == (atB > 0)) {
            const double kept = 1 - atQ / atB;
            atA *= kept > 0 ? kept : 0.5;
        } else {
            a = b;
            atA = atB;
        }
        b = q;
        atB = atQ;
    }
};

/// All data of one value 5. Members are not initialised before they are computed, as there are many stations.
struct Station {
    double q;            ///< value 5
    double discriminant; ///< branches are real where it is above 0
    bool real;
    bool end;              ///< both labels coincide: branches turn back as the other label
    Branch branches[2][2]; ///< by label and sense
};

/// Stations around the whole turn of value 5, ascending: evenly spaced ones, the ends of branches between
/// them, and one more beside each end where the branch changes quickly.
class Stations {
public:
    Stations(const CoupledArm& arm_, const CoupledPose& pose_);

    std::size_t size() const { return count; }
    /// Indices wrap around: the first station follows the last one.
    const Station& operator[](std::size_t i) const {
        while (i >= count) {
            i -= count;
        }
        return items[order[i]];
    }

private:
    void Fill(Station& station, const WristAt& wrist) const;
    double Discriminant(double q) const;
    void Insert(std::size_t item);
    void Add(double q, bool end);
    void AddEndBetween(double real, double complex, double atReal, double atComplex);
    void SplitWhereItCrosses(std::size_t nearest);

    static constexpr std::size_t Most = 2 * CoupledNodes;

    const CoupledArm& arm;
    const CoupledPose& pose;
    std::size_t count = 0;
    std::array<std::uint8_t, Most> order;
    std::array<Station, Most> items;
};

/// A place on a branch. A branch goes from one end of its label to the other and back as the other label.
struct Sample {
    double q;
    int label;
    bool end;
    const Branch* at;
};

/// Finds the places on branches where the upper arm has its true length.
class BranchSearch {
public:
    /// Called with value 5 and its branch at every root.
    using Found = void (*)(void* context, double q, const Branch& branch);

    BranchSearch(const CoupledArm& arm_, const CoupledPose& pose_, Found found_, void* context_)
        : arm(arm_), pose(pose_), found(found_), context(context_) {}

    void Run(const Stations& stations);
    /// Least error (mm) of the upper arm's length that was found.
    double Least() const { return least; }

private:
    Branch At(double q, int label, const Branch& like) const;
    void Append(const Stations& stations, std::size_t i, int label, int& sense);
    void FollowWhole(const Stations& stations);
    void FollowRun(const Stations& stations, std::size_t first, std::size_t run);
    void SearchChain();
    void SearchPair(const Sample& a, const Sample& b, int depth);
    void SearchTriple(const Sample& a, const Sample& b, const Sample& c);
    void SearchDip(Sample a, Sample b, Sample c);
    void FindRoot(const Sample& a, const Sample& b);

    const CoupledArm& arm;
    const CoupledPose& pose;
    Found found;
    void* context;
    double least = std::numeric_limits<double>::infinity();
    std::size_t length = 0;
    std::array<Sample, 4 * CoupledNodes + 4> chain;
};

} // namespace planning
