#pragma once

#include <cell/documents/Frames.h>
#include <cell/documents/JsonNode.h>
#include <string>
#include <vector>

namespace cell {

/// One axis of a rail or positioner at value zero, in its entity's frame.
struct CarrierJoint {
    Triple origin;  ///< mm
    Triple axis;    ///< unit, positive sense
    JointType type; ///< JointRotary or JointLinear
    double low;     ///< degrees, mm where linear
    double high;
};

/// A rail, a positioner or a table as plain facts. Without joints it is a table.
struct CarrierDescription {
    std::string name;
    std::vector<CarrierJoint> joints;
    Rigid flange; ///< in the entity's frame at zero
};

/// @param kind "pedestal" or "bench", which the description must be of.
/// @throws InputError for whatever is missing or makes no carrier.
CarrierDescription ReadCarrier(const JsonNode& node, const std::string& kind);

} // namespace cell
