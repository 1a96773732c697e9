#pragma once

#include "Vec.h"

#include <planning/Seam.h>
#include <vector>

namespace planning {

/// Tilts, spin and stand-off of the tool at a pose, then the values of carrier and holder.
inline constexpr std::size_t MaxOuter = 8;
struct Choice {
    double spin = 0; ///< from the carried frame, see SeamLine
    double lead = 0;
    double work = 0;
    double stickOut = 0;
    std::array<double, MaxOuter> outer{};
};

/// A seam's poses with their frames and how far along they lie.
class SeamLine {
public:
    /// @throws std::invalid_argument naming the pose that is no place of a seam.
    explicit SeamLine(const std::vector<SeamPose>& poses);

    std::size_t size() const { return frames.size(); }
    /// Along the seam, mm; a turn of the tool counts as 20 mm a radian, so that a corner has a length.
    double At(std::size_t i) const { return lengths[i]; }
    double Total() const { return lengths.back(); }
    /// X along the seam, Z along the tool, in the frame of the work.
    const Rigid& Frame(std::size_t i) const { return frames[i]; }
    const Vec& Up(std::size_t i) const { return ups[i]; }
    /// Turn about the tool from the frame that is carried along without spin to the frame of the pose. A
    /// Choice counts spin from the carried frame: what stays the same there does not turn the tool.
    double Twist(std::size_t i) const { return twists[i]; }
    /// Spin from the direction of travel.
    double FromTravel(std::size_t i, const Choice& choice) const { return choice.spin - twists[i]; }
    /// Pose of the tool centre in the frame of the work.
    Rigid ToolAt(std::size_t i, const Choice& choice) const;

private:
    void Place(const std::vector<SeamPose>& poses, std::size_t i, bool closed);
    void Carry(std::size_t i);

    std::vector<Rigid> frames;
    std::vector<Vec> ups;
    std::vector<double> lengths;
    std::vector<double> twists;
};

} // namespace planning
