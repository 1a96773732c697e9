#pragma once

#include <cell/Motion.h>
#include <cell/documents/JsonNode.h>
#include <host/workpiece/GenericEntityConfig.h>
#include <map>
#include <string>

/// What a cell can be made of: one table entry a kind.
namespace cell {

/// Builds the mechanism that an item of the file's list describes.
using MechanismReader = std::shared_ptr<GenericEntityConfig> (*)(const JsonNode& item,
                                                                 const std::string& name, std::uint64_t hash);
const std::map<std::string, MechanismReader>& MechanismKinds();

/// A torch or a painting tool from its parameters. Its spray cone and the switch that shows it are settings
/// of the process, which the item's "paint" sets.
std::shared_ptr<GenericEntityConfig> ReadTool(const JsonNode& item, const std::string& name,
                                              std::uint64_t hash);

/// A ground rail, a positioner or table, and what is worked on; whether it is solids or a file.
std::shared_ptr<GenericEntityConfig> ReadPedestal(const JsonNode& item, const std::string& name,
                                                  std::uint64_t hash);
std::shared_ptr<GenericEntityConfig> ReadBench(const JsonNode& item, const std::string& name,
                                               std::uint64_t hash);
std::shared_ptr<GenericEntityConfig> ReadWorkpiece(const JsonNode& item, const std::string& name,
                                                   std::uint64_t hash);

/// Refuses every key that neither all mechanisms have nor this kind.
void OnlyMechanismKeys(const JsonNode& item, const std::vector<const char*>& own);
/// What the item is built from: the file that "model" names, or what stands under "structure".
JsonNode StructureOf(const JsonNode& item);

/// Reads the parameters of a motion between key states.
/// @param keys at least two states of one system.
using MotionReader = Interpolation (*)(const JsonNode& item, const std::vector<KeyState>& keys,
                                       const System& system);
const std::map<std::string, MotionReader>& MotionKinds();

/// The table's entry for the item's "kind".
template <typename Reader>
const Reader& RequireKind(const std::map<std::string, Reader>& kinds, const JsonNode& kind) {
    const auto found = kinds.find(kind.Text());
    if (found != kinds.end()) {
        return found->second;
    }
    std::string list;
    for (const auto& [known, reader] : kinds) {
        list += (list.empty() ? "" : ", ") + known;
    }
    kind.Refuse("one of " + list);
}

/// "location_mm" and "euler_deg" (intrinsic X, Y, Z) of a placement.
gp_Trsf ReadPlacement(const JsonNode& node);

} // namespace cell
