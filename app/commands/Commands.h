#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

/// What the program can do. Each command checks all of its input before it writes anything, and throws
/// InputError where something is wrong with it.
namespace cell {

struct InfoRequest {
    std::filesystem::path file;
    bool json = false;
};
/// Prints what the cell is made of.
void Info(const InfoRequest& request, std::ostream& out);

struct FkRequest {
    std::filesystem::path file;
    std::string robot; ///< empty: the cell's only robot
    /// Degrees; none: one set a line from `in`, or the solutions of inverse kinematics.
    std::optional<std::string> values;
    bool strict = false; ///< refuse values outside the limits
};
/// Prints one JSON object a set of values: flange, tool centre and joint origins in the world. Values outside
/// the limits are computed too; `remarks` gets a line for each such value.
void Fk(const FkRequest& request, std::istream& in, std::ostream& out, std::ostream& remarks);

struct IkRequest {
    std::filesystem::path file;
    std::string robot;         ///< empty: the cell's only robot
    std::string frame = "tcp"; ///< which pose of a line to solve for: "tcp" or "flange"
};
/// Prints one JSON object a line of `in`, each a pose in the world as Fk prints it: all joint values that
/// lead there, whole turns within the limits included. Lines before a faulty one are answered.
void Ik(const IkRequest& request, std::istream& in, std::ostream& out);

struct PlanRequest {
    std::filesystem::path file;
    std::filesystem::path folder;
    bool progress = false; ///< report on standard error while it works
    bool json = false;     ///< the table as JSON
};
/// Writes trace.json into the folder and prints a table of the motions.
void Plan(const PlanRequest& request, std::ostream& standard);

struct PathRequest {
    std::filesystem::path file;
    std::string name; ///< of the tool path
    std::filesystem::path target;
    bool json = false;      ///< the counts as JSON
    std::string state = {}; ///< key state, or file of a state or trace; empty: poses on the workpiece
};
/// Smooths, thins and checks a tool path, writes its poses (mm) as JSON and prints how many poses each step
/// left. The poses are in the workpiece's frame, or with a state in the world.
void WritePath(const PathRequest& request, std::ostream& standard);

struct SaveRequest {
    std::filesystem::path file;
    std::filesystem::path folder;
};
/// Writes the whole cell into a folder: cell.json, and for each mechanism its document and its package.
/// Loading that cell.json gives the same cell, identifiers included.
void Save(const SaveRequest& request, std::ostream& out);

struct WorkspaceRequest {
    std::filesystem::path file;
    std::string robot;
    std::filesystem::path
        target; ///< .step, .stp, .brep, .stl: the envelope in the world, mm; .png: a picture
    std::filesystem::path section; ///< .svg: a drawing of the section; empty: none
    bool json = false;             ///< sizes and section as JSON
};
/// Writes what a robot reaches and prints its size. A picture needs a display.
void WriteWorkspace(const WorkspaceRequest& request, std::ostream& standard);

struct RenderRequest {
    std::filesystem::path file;
    std::string state; ///< key state, or file of a state or trace; empty: a third through the last motion
    std::filesystem::path picture;
    int frames = 0;         ///< pictures of the whole motion, evenly spaced; 0 for one picture of the cell
    bool sheet = false;     ///< all of them side by side in the one file
    bool workspace = false; ///< also the reachable region of every robot
    bool maxReach = false;  ///< also the spheroid of every robot's longest reach
    bool triads = false;    ///< also the frames of links, flanges and tools
    std::string focus;      ///< mechanism that fills the picture; empty: all of the cell
};
/// Draws the cell into a PNG file, or its motion into several (FILE_01.png, ...). Needs a display (DISPLAY),
/// a virtual one will do.
void Render(const RenderRequest& request);

struct ViewRequest {
    std::filesystem::path file;
};
/// Opens a window on the cell and returns when it is closed. Needs a display.
void View(const ViewRequest& request);

} // namespace cell
