#pragma once

#include "Downhand.h"
#include "SeamLine.h"

#include <optional>
#include <planning/CarriedArm.h>

namespace planning {

/// What may be chosen at a choice, by number: spin, lead, work angle, stick-out, then the outer axes.
inline constexpr std::size_t Tilts = 4;
inline constexpr std::size_t MaxDims = Tilts + MaxOuter;
double& Dim(Choice& choice, std::size_t dim);
double Dim(const Choice& choice, std::size_t dim);

/// The choices at each pose of a seam: on a grid, or around others.
class SeamChoices {
public:
    /// @throws std::invalid_argument naming the part of the freedom, its value and what was expected.
    SeamChoices(const CarriedArm& arm_, const Rigid& work_, const SeamFreedom& freedom_,
                const SeamLine& line_);

    /// How many of the stated steps lie between the values of a dimension; ones for the whole grid.
    using Coarseness = std::array<double, MaxDims>;

    /// All choices of the grid, those of one set of outer values in a row. @return how many the downhand
    /// condition has left out.
    std::size_t Grid(std::size_t pose, const Coarseness& coarse, std::vector<Choice>& out) const;
    /// Choices with `dims` at, above and below those of another one, as far as they are allowed.
    void Tube(std::size_t pose, const Choice& about, const std::vector<std::size_t>& dims,
              const std::array<double, MaxDims>& by, std::vector<Choice>& out) const;
    /// Moves a choice into the bounds. @return whether it is one then: not where the up direction is off.
    bool Admit(std::size_t pose, Choice& choice) const;

    /// Dimensions that may vary, and their steps.
    const std::vector<std::size_t>& Varying() const { return varying; }
    double Step(std::size_t dim) const { return steps[dim]; }
    /// About how many values a dimension has on the grid.
    double Count(std::size_t dim) const;
    /// Whether spin differs by whole turns alone: any turn is allowed.
    bool AnySpin() const;
    bool HasDownhand() const { return downhand.has_value(); }
    double OffVertical(std::size_t pose, const Choice& choice) const;
    const SeamFreedom& Freedom() const { return freedom; }
    const SeamLine& Line() const { return line; }
    std::size_t Outer() const { return axes.size(); }
    /// Whether an outer axis slides.
    bool Slides(std::size_t outer) const {
        return outer < CarrierAxes() ? arm.Carrier().Slides(outer)
                                     : arm.Holder().Slides(outer - CarrierAxes());
    }
    double Reach() const { return arm.Arm().Reach(); }
    std::size_t CarrierAxes() const { return arm.Carrier().Axes(); }

private:
    void TakeAxes(const CarrierChain& chain, const std::vector<AxisFreedom>& wanted, const char* name);
    AxisFreedom Bounded(const CarrierChain& chain, const AxisFreedom& wanted, std::size_t axis,
                        const std::string& place) const;
    void TakeTilt(std::size_t dim, const Tolerance& tolerance, const char* name);
    double ValueAt(std::size_t pose, std::size_t axis) const;
    std::size_t OuterGrid(std::size_t pose, const Coarseness& coarse, std::vector<Choice>& out) const;
    void AddDownhand(std::size_t pose, const Coarseness& coarse, std::vector<Choice>& choices,
                     std::size_t& left) const;

    const CarriedArm& arm;
    Rigid work;
    const SeamFreedom& freedom;
    const SeamLine& line;
    std::array<Tolerance, Tilts> tilts;
    std::vector<AxisFreedom> axes;   ///< of carrier and holder, bounded
    std::vector<std::size_t> turned; ///< positions in `axes` of those that turn the seam up
    std::optional<Downhand> downhand;
    std::vector<std::size_t> varying;
    std::array<double, MaxDims> steps{};
};

} // namespace planning
