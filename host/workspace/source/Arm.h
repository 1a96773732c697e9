#pragma once

#include <array>
#include <host/tools/Vec.h>
#include <host/workspace/WorkSpace.h>
#include <vector>

namespace WorkSpace {

using spatial::Vec;

struct Range {
    double low, high;
    double Width() const { return high - low; }
    /// `count` evenly spaced values from low to high, both included; the middle for a count of one.
    std::vector<double> Spread(int count) const;
};

/// The arm that a record describes, with its joints grouped as the method needs them: joints 2 and 3 position
/// the wrist, three joints turn it. Lengths in mm, angles in rad.
class Arm {
public:
    /// @throws std::invalid_argument naming what is wrong with the record.
    explicit Arm(const Robot& robot);

    Range upperArm, forearm;        ///< joints 2 and 3
    std::array<Range, 3> wrist;     ///< joints 4, 5 and the last; the follower of a coupled wrist is its own
    std::array<double, 3> leverage; ///< how far (mm) the tool centre can be from each wrist joint's axis

    /// Origin of the second row's frame, which joint 2 turns about, while joint 1 is at zero.
    Vec Shoulder() const;
    /// Frame of the third row, which carries the wrist, joint 1 at zero. Its Z is the robot's +Y or -Y.
    Rigid Elbow(double upper, double fore) const;
    /// The z, in the frame of the third row, of the plane through joint 1's axis.
    double AxisPlane() const;
    /// Tool centre in the frame of the third row.
    Vec ToolInElbow(const std::array<double, 3>& values) const;
    /// Greatest distance of the tool centre from the shoulder over all joint values, to 1e-4 of itself.
    double StretchedLength() const;

private:
    void RequireParallelArm() const;
    Rigid Row(std::size_t row, double value) const;
    bool Coupled() const { return table.size() == 7; }

    std::vector<std::array<double, 4>> table;
    Vec tool;
};

} // namespace WorkSpace
