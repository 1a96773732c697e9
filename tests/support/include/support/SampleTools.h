#pragma once

#include <host/tools/gpHandle.h>
#include <numbers>
#include <support/Text.h>

namespace sample {

/// A realistic torch: neck of 22 degrees, tool centre 330 mm from the flange.
inline Json::Value TorchParameters() {
    return Parsed(R"({"Type": "WeldGun", "tip_radius": 4.0, "tip_length": 8.0, "nozzle_radius": 12.0,
                      "nozzle_length": 75.0, "neck_radius": 10.0, "body_radius": 28.0, "tcp_z": 330.0,
                      "tcp_x": 60.0, "torch_angle": 158.0, "body_length": 110.0, "stick_out": 15.0})");
}

/// Its tool centre relative to the flange.
inline gp_Trsf TorchCentre() {
    constexpr double neck = 22 * std::numbers::pi / 180;
    return gpHandle::EulerToTrsf(LocEuler({60, 0, 330}, {0, neck, 0}));
}

} // namespace sample
