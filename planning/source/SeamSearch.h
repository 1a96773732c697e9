#pragma once

#include "SeamRungs.h"

namespace planning {

/// A place of a way with its choice.
struct SeamStop {
    std::size_t pose;
    Choice choice;
    std::vector<double> values;
    int group;
    double cost; ///< of the place alone
};

struct SeamWay {
    std::vector<SeamStop> stops; ///< one a pose looked at; two where the configuration changes
    double cost = 0;
};

/// How a grid is thinned for a first look.
struct Thinning {
    std::size_t stride = 1;
    SeamChoices::Coarseness coarse{};
};

/// Searches a seam's way: on a grid first, which is coarse where the whole one would be too large, then in
/// ever narrower tubes around the best way.
class SeamSearch {
public:
    SeamSearch(const SeamRungs& rungs_, const std::vector<SeamPose>& poses_);

    /// @return no stops where no way was found.
    SeamWay Run() const;
    /// A grid with about so many choices in all, at most.
    Thinning ThinnedTo(double most) const;
    /// Cheapest way through the thinned grid. Steps may be as much longer as its poses are farther apart and
    /// its choices coarser than a step.
    SeamWay OnGrid(const Thinning& thinning) const;
    /// Whether a grid is the whole one and its steps are those of the rules.
    bool IsWhole(const Thinning& thinning) const;
    std::vector<std::size_t> PosesOf(const Thinning& thinning) const;
    /// Rules of a step over so many poses.
    StepRules StepsOf(const Thinning& thinning, std::size_t strides) const;
    /// Length of the seam (mm) that one of the poses stands for.
    double Share(const std::vector<std::size_t>& looked, std::size_t k) const;
    double Between(std::size_t from, std::size_t to) const;

private:
    using Widths = std::array<double, MaxDims>;
    using Dims = std::vector<std::size_t>;
    /// Choices at the poses, between those of a way.
    SeamWay Spread(const SeamWay& way, const std::vector<std::size_t>& looked) const;
    SeamWay InTube(const SeamWay& about, const std::vector<std::size_t>& looked, const Dims& dims,
                   const Widths& by) const;
    /// Searches tubes, from `part` of the coarse steps on, until they are narrow and the cost no longer
    /// falls.
    void Narrow(SeamWay& way, const std::vector<std::size_t>& looked, const Widths& coarse, double part,
                int rounds) const;
    void Ramp(SeamWay& way, const Thinning& thinning, double stride) const;
    bool Refine(SeamWay& way, const Thinning& thinning) const;
    void Relax(SeamWay& way) const;
    bool RelaxStop(SeamWay& way, std::size_t i, const StepRules& rules) const;
    double StopCost(const SeamWay& way, std::size_t i, const SeamStop& stop, const StepRules& rules) const;
    SeamStop Stop(std::size_t pose, const Choice& choice, const SeamRung& rung, std::size_t candidate) const;
    void TakeTurns(SeamWay& way) const;

    const SeamRungs& rungs;
    const SeamChoices& choices;
    const std::vector<SeamPose>& poses;
    std::vector<std::size_t> all;
};

} // namespace planning
