#include <CLI/CLI.hpp>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Standard_Failure.hxx>
#include <cell/Commands.h>
#include <cell/InputError.h>
#include <csignal>
#include <functional>
#include <host/tools/LogUtils.h>
#include <iostream>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

namespace {

constexpr int Done = 0;
constexpr int WrongInput = 1;
constexpr int WrongUsage = 2;

constexpr int MostFrames = 999;

/// The kernel's readers and drivers would put their remarks between the program's own output.
void SilenceKernel() { Message::DefaultMessenger()->ChangePrinters().Clear(); }

/// Standard error is for the one line that says what is wrong, unless the user wants to see the log as well.
void SetUpLog(bool verbose) {
    spdlog::sink_ptr sink;
    if (verbose) {
        sink = std::make_shared<spdlog::sinks::stderr_sink_mt>();
    } else {
        sink = std::make_shared<spdlog::sinks::null_sink_mt>();
    }
    auto logger = std::make_shared<spdlog::logger>(LogUtils::LoggerName, std::move(sink));
    logger->set_level(spdlog::level::debug);
    spdlog::register_logger(std::move(logger));
}

int Report(const std::string& line) {
    std::cerr << line << '\n';
    return WrongInput;
}

int Guarded(const std::function<void()>& command) {
    try {
        command();
        std::cout.flush();
        return std::cout ? Done : Report("standard output: cannot be written, expected room for the result");
    } catch (const cell::InputError& error) {
        return Report(error.what());
    } catch (const Standard_Failure& failure) {
        return Report(std::string("mechanism-cell: geometry: ") + failure.GetMessageString());
    } catch (const std::exception& error) {
        return Report(std::string("mechanism-cell: ") + error.what());
    } catch (const std::string& text) { // the library's own failures
        return Report("mechanism-cell: " + text);
    }
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Robot cells on the command line: what they are made of, where they reach, how they move.");
    app.require_subcommand(1);
    app.fallthrough();
    bool verbose = false;
    app.add_flag("--verbose", verbose, "Show the library's log on standard error");

    std::string infoFile;
    auto* info = app.add_subcommand("info", "Print mechanisms, axes, tables, systems and motions");
    info->add_option("CELL", infoFile, "Cell or arm file")->required();

    cell::FkRequest fkRequest;
    auto* fk = app.add_subcommand("fk", "Print flange, tool centre and joint origins in the world, as JSON");
    fk->add_option("CELL", fkRequest.file, "Cell or arm file")->required();
    fk->add_option("--robot", fkRequest.robot, "Robot to move, where the cell has several");
    fk->add_option("--values-deg", fkRequest.values, "Joint values a,b,... (else lines from standard input)");

    cell::PlanRequest planRequest;
    auto* plan = app.add_subcommand("plan", "Plan every motion, write trace.json, print a table");
    plan->add_option("CELL", planRequest.file, "Cell file")->required();
    plan->add_option("--out", planRequest.folder, "Folder for trace.json")->required();

    cell::PathRequest pathRequest;
    auto* path = app.add_subcommand("path", "Smooth, thin and check a tool path, write its poses as JSON");
    path->add_option("CELL", pathRequest.file, "Cell file")->required();
    path->add_option("--name", pathRequest.name, "Name of the tool path")->required();
    path->add_option("--out", pathRequest.target, "JSON file to write")->required();

    cell::SaveRequest saveRequest;
    auto* save = app.add_subcommand("save", "Write the whole cell into a folder, identifiers included");
    save->add_option("CELL", saveRequest.file, "Cell file")->required();
    save->add_option("--out", saveRequest.folder, "Folder for cell.json, documents and packages")->required();

    cell::WorkspaceRequest workspaceRequest;
    auto* workspace =
        app.add_subcommand("workspace", "Write what a robot reaches: solids, a picture, a section");
    workspace->add_option("CELL", workspaceRequest.file, "Cell or arm file")->required();
    workspace->add_option("--robot", workspaceRequest.robot, "Name of the robot")->required();
    workspace->add_option("--out", workspaceRequest.target, "Solids (.step, .brep, .stl) or picture (.png)")
        ->required();
    workspace->add_option("--section", workspaceRequest.section, "Drawing of the section (.svg)");
    workspace->footer("Example: mechanism-cell workspace examples/cells/arc_welding.json --robot welder "
                      "--out reach.step --section reach.svg");

    cell::RenderRequest renderRequest;
    auto* render = app.add_subcommand("render", "Draw the cell into a PNG file (needs a display)");
    render->add_option("CELL", renderRequest.file, "Cell or arm file")->required();
    auto* state = render->add_option("--state", renderRequest.state, "State or trace to show");
    auto* frames =
        render->add_option("--frames", renderRequest.frames, "Pictures of the motion, FILE_01.png and so on");
    frames->check(CLI::Range(1, MostFrames))->excludes(state);
    render->add_flag("--sheet", renderRequest.sheet, "All frames in the one file")->needs(frames);
    render->add_flag("--workspace", renderRequest.workspace, "Also what every robot reaches");
    render->add_flag("--max-reach", renderRequest.maxReach, "Also every robot's longest reach");
    render->add_option("--out", renderRequest.picture, "Picture to write")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? Done : WrongUsage;
    }
    SetUpLog(verbose);
    SilenceKernel();
    // A file that may not grow is reported like a full disk instead of ending the program half way.
    std::signal(SIGXFSZ, SIG_IGN);
    planRequest.progress = isatty(STDERR_FILENO) != 0;
    return Guarded([&] {
        if (info->parsed()) {
            cell::Info(infoFile, std::cout);
        } else if (fk->parsed()) {
            cell::Fk(fkRequest, std::cin, std::cout);
        } else if (plan->parsed()) {
            cell::Plan(planRequest, std::cout);
        } else if (path->parsed()) {
            cell::WritePath(pathRequest, std::cout);
        } else if (save->parsed()) {
            cell::Save(saveRequest, std::cout);
        } else if (workspace->parsed()) {
            cell::WriteWorkspace(workspaceRequest, std::cout);
        } else {
            cell::Render(renderRequest);
        }
    });
}
