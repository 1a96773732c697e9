#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Standard_Failure.hxx>
#include <app/commands/CommandLine.h>
#include <app/commands/Signals.h>
#include <cell/InputError.h>
#include <cell/text/Notice.h>
#include <csignal>
#include <cstdlib>
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

/// Messages of Open CASCADE's readers and drivers would mix with the program's own output.
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

/// Red on a terminal; the plain line otherwise.
int Report(const std::string& line) {
    const bool coloured = isatty(STDERR_FILENO) != 0 && std::getenv("NO_COLOR") == nullptr;
    cell::Notice("");
    std::cerr << (coloured ? "\033[31m" : "") << line << (coloured ? "\033[0m" : "") << '\n';
    return WrongInput;
}

/// One line that is overwritten, on a terminal.
void ShowNotices() {
    if (isatty(STDERR_FILENO) != 0) {
        cell::SetNotice([](const std::string& text) { std::cerr << "\r\033[K" << text << std::flush; });
    }
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
    cell::CommandLine line;
    bool wrongUsage = false;
    if (!line.Parse(argc, argv, wrongUsage)) {
        return wrongUsage ? WrongUsage : Done;
    }
    cell::RemoveScratchOnSignals();
    SetUpLog(line.Verbose());
    SilenceKernel();
    ShowNotices();
    // A file that may not grow is reported like a full disk instead of ending the program half way.
    std::signal(SIGXFSZ, SIG_IGN);
    return Guarded([&] { line.Run(); });
}
