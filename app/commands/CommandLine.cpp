#include <CLI/CLI.hpp>
#include <app/commands/CommandLine.h>
#include <app/commands/Commands.h>
#include <app/commands/Completion.h>
#include <app/commands/InstalledFile.h>
#include <cell/InputError.h>
#include <cell/documents/ShapeFile.h>
#include <cmath>
#include <iostream>
#include <new>
#include <unistd.h>

namespace cell {

namespace {

constexpr int MostFrames = 999;

using Run = std::function<void()>;

constexpr const char* CellFile = "Cell file";
constexpr const char* CellOrArm = "Cell or arm file";

/// A sub-command, and the request that its options fill.
template <typename Request>
struct Command {
    CLI::App& line;
    std::shared_ptr<Request> request;
};

/// Reports errors of the file system with the file that the command was given.
void RunOn(const std::filesystem::path& file, const Run& command) {
    try {
        command();
    } catch (const std::bad_alloc&) {
        throw InputError(file.string(), "", "needs more memory than there is",
                         "a file that fits into memory");
    } catch (const std::filesystem::filesystem_error& error) {
        const auto& about = error.path1().empty() ? file : error.path1();
        throw InputError(about.string(), "", error.code().message(), "a file or folder that can be used");
    }
}

/// A sub-command on a cell, which `command` runs with its request.
template <typename Request>
Command<Request> Add(CLI::App& app, Run& run, const char* name, const char* does, const char* examples,
                     const char* file, void (*command)(const Request&)) {
    auto request = std::make_shared<Request>();
    CLI::App& line = *app.add_subcommand(name, does);
    line.footer(std::string("Examples:\n") + examples);
    line.callback([request, command, &run] {
        request->file = InstalledFile(request->file);
        run = [request, command] { RunOn(request->file, [&] { command(*request); }); };
    });
    line.add_option("CELL", request->file, file)->required();
    return {line, request};
}

void AddInfo(CLI::App& app, Run& run) {
    const auto [info, request] =
        Add<InfoRequest>(app, run, "info", "Print mechanisms, axes, tables, systems and motions",
                         "  mechanism-cell info examples/arms/ur_ur10e.json\n"
                         "  mechanism-cell info examples/cells/painting.json --json",
                         CellOrArm, [](const InfoRequest& wanted) { Info(wanted, std::cout); });
    info.add_flag("--json", request->json, "As JSON, for programs");
}

void AddFk(CLI::App& app, Run& run) {
    const auto [fk, request] = Add<FkRequest>(
        app, run, "fk", "Print flange, tool centre and joint origins in the world, as JSON",
        "  mechanism-cell fk examples/arms/ur_ur10e.json --values-deg 0,-90,90,0,90,0\n"
        "  mechanism-cell fk examples/cells/two_robots.json --robot left < values.txt",
        CellOrArm, [](const FkRequest& wanted) { Fk(wanted, std::cin, std::cout, std::cerr); });
    fk.add_option("--robot", request->robot, "Robot to move, where the cell has several");
    fk.add_option("--values-deg", request->values, "Joint values a,b,... (else lines from standard input)");
    fk.add_flag("--strict", request->strict, "Refuse values outside the limits");
}

void AddIk(CLI::App& app, Run& run) {
    const auto [ik, request] =
        Add<IkRequest>(app, run, "ik", "Print all joint values for poses as fk prints them, as JSON",
                       "  mechanism-cell fk ARM --values-deg 0,-90,90,0,90,0 | mechanism-cell ik ARM\n"
                       "  mechanism-cell ik examples/arms/ur_ur10e.json --frame flange < poses.txt",
                       CellOrArm, [](const IkRequest& wanted) { Ik(wanted, std::cin, std::cout); });
    ik.add_option("--robot", request->robot, "Robot to solve for, where the cell has several");
    ik.add_option("--frame", request->frame, "Which pose of a line: tcp or flange")
        ->check(CLI::IsMember({"tcp", "flange"}));
}

void AddPlan(CLI::App& app, Run& run) {
    const auto [plan, request] =
        Add<PlanRequest>(app, run, "plan", "Plan every motion, write trace.json, print a table",
                         "  mechanism-cell plan examples/cells/arc_welding.json --out out", CellFile,
                         [](const PlanRequest& wanted) { Plan(wanted, std::cout); });
    request->progress = isatty(STDERR_FILENO) != 0;
    plan.add_option("--out", request->folder, "Folder for trace.json")->default_val("out");
    plan.add_flag("--json", request->json, "Print the table as JSON");
}

void AddPath(CLI::App& app, Run& run) {
    const auto [path, request] =
        Add<PathRequest>(app, run, "path", "Smooth, thin and check a tool path, write its poses as JSON",
                         "  mechanism-cell path examples/cells/seam.json --name saddle --out saddle.json",
                         CellFile, [](const PathRequest& wanted) { WritePath(wanted, std::cout); });
    path.add_option("--name", request->name, "Name of the tool path")->required();
    path.add_option("--state", request->state,
                    "Key state or file (state, trace): poses in the world there, not on the workpiece");
    path.add_option("--out", request->target, "JSON file to write")->required();
    path.add_flag("--json", request->json, "Print the counts as JSON");
}

void AddSave(CLI::App& app, Run& run) {
    const auto [save, request] =
        Add<SaveRequest>(app, run, "save", "Write the whole cell into a folder, identifiers included",
                         "  mechanism-cell save examples/cells/painting.json --out saved\n"
                         "  mechanism-cell info saved/cell.json",
                         CellFile, [](const SaveRequest& wanted) { Save(wanted, std::cout); });
    save.add_option("--out", request->folder, "Folder for cell.json, documents and packages")->required();
}

void AddRender(CLI::App& app, Run& run) {
    const auto [render, request] = Add<RenderRequest>(
        app, run, "render", "Draw the cell into a PNG file (needs a display)",
        "  xvfb-run -a mechanism-cell render examples/cells/arc_welding.json --out cell.png\n"
        "  mechanism-cell render CELL --frames 6 --sheet --out motion.png\n"
        "  mechanism-cell render CELL --state home --triads --focus torch --out torch.png",
        CellOrArm, Render);
    auto* state = render.add_option("--state", request->state, "Key state or file (state, trace) to show");
    auto* frames =
        render.add_option("--frames", request->frames, "Pictures of the motion, FILE_01.png and so on");
    frames->check(CLI::Range(1, MostFrames))->excludes(state);
    render.add_flag("--sheet", request->sheet, "All frames in the one file")->needs(frames);
    render.add_flag("--workspace", request->workspace, "Show what every robot reaches");
    render.add_flag("--max-reach", request->maxReach, "Show the spheroid of every robot's longest reach");
    render.add_flag("--triads", request->triads, "Show the frames of links, flanges and tools");
    render.add_option("--focus", request->focus, "Mechanism that fills the picture");
    render.add_option("--out", request->picture, "Picture to write")->required();
}

void AddWorkspace(CLI::App& app, Run& run) {
    const auto [workspace, request] = Add<WorkspaceRequest>(
        app, run, "workspace", "Write what a robot reaches: solids, a picture, a section",
        "  mechanism-cell workspace examples/cells/arc_welding.json --robot welder --out reach.step "
        "--section reach.svg\n"
        "  xvfb-run -a mechanism-cell workspace CELL --robot welder --out reach.png",
        CellOrArm, [](const WorkspaceRequest& wanted) { WriteWorkspace(wanted, std::cout); });
    workspace.add_option("--robot", request->robot, "Robot whose workspace to write")->required();
    workspace.add_option("--out", request->target, "File to write: .step, .brep, .stl or .png")->required();
    workspace.add_flag("--json", request->json, "Print sizes and section as JSON");
    workspace.add_option("--section", request->section, "Drawing of the section as well, .svg");
}

void AddView(CLI::App& app, Run& run) {
    Add<ViewRequest>(app, run, "view",
                     "Open a window on the cell: orbit, move axes, play motions (needs a display)",
                     "  mechanism-cell view examples/cells/rail_and_positioner.json    (H shows the keys)",
                     CellOrArm, View);
}

void AddCompletion(CLI::App& app, Run& run) {
    CLI::App* completion =
        app.add_subcommand("completion", "Print a script that teaches bash the sub-commands and options");
    completion->footer("Example:\n  source <(mechanism-cell completion)");
    completion->callback([&app, &run] { run = [&app] { PrintCompletion(app, std::cout); }; });
}

} // namespace

CommandLine::CommandLine()
    : app(std::make_unique<CLI::App>(
          "Robot cells on the command line: what they are made of, where they reach, how they move.")) {
    app->require_subcommand(1);
    app->fallthrough();
    app->add_option("--part-seconds", partSeconds, "How long the reading of one part file may take")
        ->check(CLI::Range(0.001, 1e6))
        ->capture_default_str();
    app->add_flag("--verbose", verbose, "Show the library's log on standard error");
    app->footer(
        "Start with:\n"
        "  mechanism-cell info examples/cells/arc_welding.json\n"
        "  mechanism-cell plan examples/cells/arc_welding.json\n"
        "  mechanism-cell COMMAND --help    options and examples of a command\n"
        "A cell or arm that is not found as named is looked for in the data installed with the program.");
    AddInfo(*app, run);
    AddFk(*app, run);
    AddIk(*app, run);
    AddPlan(*app, run);
    AddPath(*app, run);
    AddSave(*app, run);
    AddRender(*app, run);
    AddWorkspace(*app, run);
    AddView(*app, run);
    AddCompletion(*app, run);
}

CommandLine::~CommandLine() = default;

bool CommandLine::Parse(int argc, char** argv, bool& wrongUsage) {
    try {
        app->parse(argc, argv);
        SetShapeTimeLimit(std::chrono::milliseconds(std::llround(partSeconds * 1000)));
        return true;
    } catch (const CLI::ParseError& error) {
        wrongUsage = app->exit(error) != 0;
        return false;
    }
}

} // namespace cell
