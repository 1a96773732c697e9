#pragma once

#include <json/value.h>

namespace sample {

/// A believable torch: 22 degree neck, tool centre 330 mm out.
inline Json::Value TorchParameters() {
    Json::Value json;
    json["Type"] = "WeldGun";
    json["tip_radius"] = 4.0;
    json["tip_length"] = 8.0;
    json["nozzle_radius"] = 12.0;
    json["nozzle_length"] = 75.0;
    json["neck_radius"] = 10.0;
    json["body_radius"] = 28.0;
    json["tcp_z"] = 330.0;
    json["tcp_x"] = 60.0;
    json["torch_angle"] = 158.0;
    json["body_length"] = 110.0;
    json["stick_out"] = 15.0;
    return json;
}

} // namespace sample
