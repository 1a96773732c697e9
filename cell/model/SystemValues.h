#pragma once

#include <cell/documents/JsonNode.h>
#include <cell/model/Systems.h>
#include <mechanism/ContextState.h>

namespace cell {

/// The values (rad, mm) of a whole system from an item's "values_deg" (robot), "pedestal" (one number an
/// axis) and "benches" (one list a bench), the latter two in degrees or mm as each axis turns or slides.
/// @throws InputError for values that are missing, too many, or outside their limits.
std::vector<double> ReadSystemValues(const JsonNode& item, const System& system);

/// One step (rad, mm) above zero for each value of the system, from "steps_deg", "pedestal" and "benches".
std::vector<double> ReadSystemSteps(const JsonNode& item, const System& system);

/// The keys with which an item speaks of the system's values: `robotKey`, and those that the system needs.
std::vector<const char*> ValueKeys(const System& system, const char* robotKey);

/// Moves all mechanisms of the system, their bodies and what they carry.
void MoveTo(const System& system, GrpState& state);
/// Brings them back to zero.
void ResetSystem(const System& system);

} // namespace cell
