#pragma once

#include <cell/documents/JsonNode.h>
#include <cell/model/Systems.h>
#include <mechanism/GrpState.h>
#include <optional>
#include <planning/Seam.h>

namespace cell {

/// Reads what a motion of kind "follow" may choose: "tool" (a preset), "spin_deg", "lead_deg", "work_deg",
/// "stick_out_mm" (a number, or a range of two), "downhand_deg", "pedestal" and "benches" (an entry an axis:
/// a number, "free", "downhand", {"free": [a, b]} or {"linear": [a, b]}).
/// @param bench position of the bench that carries the work in the system, or none: then the other benches
/// keep the values of `rest`, as every axis does that is not spoken of.
/// @param rest values of the whole system (rad, mm).
planning::SeamFreedom ReadFreedom(const JsonNode& item, const System& system,
                                  std::optional<std::size_t> bench, GrpState rest);

} // namespace cell
