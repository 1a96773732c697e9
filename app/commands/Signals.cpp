#include <app/commands/Signals.h>
#include <cell/text/ScratchFolder.h>
#include <csignal>
#include <thread>
#include <unistd.h>

namespace {

/// Those that would end the program; what its caller ignores (nohup) stays ignored.
sigset_t EndingSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {};
        if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
            sigaddset(&signals, number);
        }
    }
    return signals;
}

/// A thread may do what a signal handler must not: take locks, walk through folders.
void EndOnFirst(const sigset_t& signals) {
    int number = 0;
    while (sigwait(&signals, &number) != 0) {
    }
    cell::ScratchFolder::RemoveAllForExit();
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, number);
    pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
    kill(getpid(), number);
}

} // namespace

void cell::RemoveScratchOnSignals() {
    const sigset_t signals = EndingSignals();
    if (pthread_sigmask(SIG_BLOCK, &signals, nullptr) == 0) {
        std::thread([signals] { EndOnFirst(signals); }).detach();
    }
}
