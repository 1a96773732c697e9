#pragma once

#include <functional>
#include <memory>

namespace CLI {
class App;
}

namespace cell {

/// The program's sub-commands with their options and help. What was chosen runs later, when the log and the
/// streams are set up.
class CommandLine {
public:
    CommandLine();
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// @return whether there is something to run; otherwise help or a complaint has been printed.
    /// @param wrongUsage set when it was a complaint.
    bool Parse(int argc, char** argv, bool& wrongUsage);
    bool Verbose() const { return verbose; }
    /// Runs the chosen command. @throws InputError for wrong input; whatever the library throws.
    void Run() const { run(); }

private:
    std::unique_ptr<CLI::App> app;
    bool verbose = false;
    double partSeconds = 120;
    std::function<void()> run;
};

} // namespace cell
