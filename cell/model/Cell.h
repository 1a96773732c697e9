#pragma once

#include <cell/documents/ArmFile.h>
#include <cell/documents/JsonNode.h>
#include <cell/model/Systems.h>
#include <cell/model/ToolPath.h>
#include <filesystem>
#include <functional>
#include <mechanism/GrpState.h>
#include <mechanism/RobotEntity.h>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace cell {

/// A mechanism of the cell and where the file speaks of it.
struct Mechanism {
    std::string kind;
    std::shared_ptr<GenericEntityConfig> entity;
    JsonNode node;
};

/// A state that was taught by hand, with the tool centre that its values give.
struct KeyState {
    std::string name;
    GrpState state;
};

/// Fills the way through some key states.
using Interpolation = std::function<std::vector<GrpState>(const std::vector<GrpState>&)>;

/// A way of one system through key states, or several such ways at once.
struct Motion {
    std::string name;
    std::string kind;
    const System* system = nullptr;
    std::vector<KeyState> keys = {};
    Interpolation interpolate = {};
    /// Positions in the cell's list of the motions that run together, each of another system; empty where
    /// this is a motion of its own.
    std::vector<std::size_t> parts = {};
};

/// A robot cell as its file describes it, built. Everything in it has been checked.
class Cell {
public:
    /// Reads a cell file, or an arm file as a cell with that one robot in it.
    /// @throws InputError for the first thing that is wrong.
    static Cell Load(const std::filesystem::path& file);

    const std::string& Name() const { return name; }
    const JsonNode& Node() const { return node; }
    const std::vector<Mechanism>& Mechanisms() const { return mechanisms; }
    /// The robots in the order of the file.
    std::vector<RobotEntity*> Robots() const;
    const std::vector<System>& Systems() const { return systems; }
    const std::vector<KeyState>& KeyStates() const { return keyStates; }
    const std::vector<Motion>& Motions() const { return motions; }
    const std::vector<ToolPath>& ToolPaths() const { return toolPaths; }

    /// Null where no mechanism has that name.
    GenericEntityConfig* Find(const std::string& mechanism) const;
    /// Null where no key state has that name.
    const KeyState* FindKeyState(const std::string& state) const;
    /// The system with that hash, or null.
    const System* FindSystem(std::uint64_t hash) const;

private:
    explicit Cell(JsonNode node_) : node(std::move(node_)) {}

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
    std::string name;
    std::vector<Mechanism> mechanisms;
    std::vector<System> systems;
    std::vector<KeyState> keyStates;
    std::vector<Motion> motions;
    std::vector<ToolPath> toolPaths;
    /// Places in the lists above: files may refer to thousands of them by name.
    std::unordered_map<std::string, std::size_t> mechanismOf;
    std::unordered_map<std::uint64_t, std::size_t> mechanismOfHash;
    std::unordered_map<std::uint64_t, std::size_t> systemOfHash;
    std::unordered_map<std::string, std::size_t> keyStateOf;
    std::unordered_map<std::string, std::size_t> motionOf;
    std::unordered_set<std::string> toolPathNames;
};

} // namespace cell
