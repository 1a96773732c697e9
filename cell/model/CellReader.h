#pragma once

#include <cell/Cell.h>
#include <cell/documents/JsonNode.h>
#include <unordered_set>

namespace cell {

/// Builds a cell from its file, item by item. Everything that an item refers to stands before it.
class CellReader {
public:
    explicit CellReader(JsonNode node_);
    /// @throws InputError for the first thing that is wrong.
    Cell Read() &&;

private:
    void Add(Mechanism mechanism);
    void Add(System system);
    void ReadArmAlone();
    void ReadCell();
    void ReadMechanism(const JsonNode& item);
    void ReadMount(const JsonNode& item) const;
    void RestoreMechanisms() const;
    void ReadSystem(const JsonNode& item);
    void ReadKeyState(const std::string& stateName, const JsonNode& item);
    void ReadMotion(const JsonNode& item);
    void RequireNewMotion(const JsonNode& motion) const;

    GenericEntityConfig& RequireMechanism(const JsonNode& reference) const;
    Workpiece& RequireWorkpiece(const JsonNode& reference) const;
    RobotEntity& RequireRobot(const JsonNode& reference) const;
    PedestalEntity* RequirePedestal(const JsonNode& reference, const RobotEntity& robot) const;
    std::vector<BenchEntity*> RequireBenches(const JsonNode& list) const;
    const System& RequireSystem(const JsonNode& reference) const;
    std::vector<std::size_t> RequireParts(const JsonNode& list) const;
    std::vector<KeyState> RequireKeys(const JsonNode& list) const;

    JsonNode node;
    Cell cell;
    std::unordered_map<std::uint64_t, std::size_t> mechanismOfHash;
    std::unordered_map<std::string, std::size_t> motionOf;
    std::unordered_set<std::string> toolPathNames;
};

} // namespace cell
