#pragma once

#include <cell/Export.h>
#include <cell/Motion.h>
#include <cell/System.h>
#include <cell/ToolPath.h>
#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace cell {

class JsonNode;

/// A mechanism of the cell.
struct Mechanism {
    std::string kind; ///< as files name it: "robot", "pedestal", "bench", "tool", "workpiece"
    std::shared_ptr<GenericEntityConfig> entity;
    std::shared_ptr<const JsonNode> node; ///< where the file speaks of it
};

/// A robot cell as its file describes it, built and checked. It is moved, not copied: motions point to its
/// systems, and its systems are registered by their hashes, so that one process holds one cell of a hash.
class CELL_EXPORT Cell {
public:
    /// Reads a cell file, or an arm file as a cell with that one robot in it.
    /// @throws InputError for the first thing that is wrong.
    static Cell Load(const std::filesystem::path& file);

    Cell(Cell&&) noexcept;
    Cell& operator=(Cell&&) noexcept;
    Cell(const Cell&) = delete;
    Cell& operator=(const Cell&) = delete;
    ~Cell();

    const std::string& Name() const { return name; }
    const JsonNode& Node() const { return *node; }
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
    friend class CellReader;
    Cell();

    std::shared_ptr<const JsonNode> node;
    std::string name;
    std::vector<Mechanism> mechanisms;
    std::vector<System> systems;
    std::vector<KeyState> keyStates;
    std::vector<Motion> motions;
    std::vector<ToolPath> toolPaths;
    /// Places in the lists above: files may refer to thousands of them by name.
    std::unordered_map<std::string, std::size_t> mechanismOf;
    std::unordered_map<std::uint64_t, std::size_t> systemOf;
    std::unordered_map<std::string, std::size_t> keyStateOf;
};

} // namespace cell
