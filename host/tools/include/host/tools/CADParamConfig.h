#pragma once

#include <array>

/// Process-wide settings that the host application keeps for its mechanisms.
/// Plain data, meant to be filled during set-up and read afterwards; not guarded against concurrent writes.
class CADParamConfig {
public:
    /// The settings of this process; never null.
    static CADParamConfig* GetInstance();

    /// Collision gap (mm) that robots and their tools get in the normal state.
    double defaultCollisionGap = 5.0;
    /// Joint values (rad) that a robot takes as its initial ones.
    std::array<double, 6> defaultRobotValues{};
    /// Spray cone of a painting tool: radius at the tool centre, mm.
    double paintUpRadius = 10.0;
    /// Spray cone: radius at its far end, mm.
    double paintDownRadius = 120.0;
    /// Spray cone: length, mm.
    double paintLength = 250.0;
    /// Whether spray cones are shown.
    bool paintShown = false;

    CADParamConfig(const CADParamConfig&) = delete;
    CADParamConfig& operator=(const CADParamConfig&) = delete;

private:
    CADParamConfig() = default;
};
