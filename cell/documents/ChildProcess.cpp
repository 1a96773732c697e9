#include <cell/InputError.h>
#include <cell/documents/ChildProcess.h>
#include <cell/text/Text.h>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#ifndef __has_feature
#define __has_feature(name) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
#define MAPS_MORE_THAN_IT_USES
#endif

namespace cell {

namespace {

using Clock = std::chrono::steady_clock;

/// The first byte of what a child sends.
enum Answer : char { Result = 'R', Refused = 'E', NoMemory = 'M' };

constexpr const char* NoMemoryText = "needs more than a quarter of the memory";

/// What a child may still map: a broken count can ask for any amount.
void LimitMemory() {
#ifndef MAPS_MORE_THAN_IT_USES
    const auto pages = static_cast<rlim_t>(sysconf(_SC_PHYS_PAGES));
    const rlim_t quarter = pages / 4 * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    const rlimit limit{quarter, quarter};
    setrlimit(RLIMIT_AS, &limit);
#endif
}

void PrepareChild(pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(1);
    }
    sigset_t none;
    sigemptyset(&none);
    pthread_sigmask(SIG_SETMASK, &none, nullptr);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    LimitMemory();
    // Messages of Open CASCADE would mix with the program's own output.
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
}

void SendAll(int pipe, const std::string& bytes) {
    for (std::size_t sent = 0; sent < bytes.size();) {
        const ssize_t count = write(pipe, bytes.data() + sent, bytes.size() - sent);
        if (count <= 0) {
            _exit(1);
        }
        sent += static_cast<std::size_t>(count);
    }
}

[[noreturn]] void RunAndSend(const std::function<std::string()>& work, int pipe) {
    try {
        const std::string bytes = work();
        SendAll(pipe, std::string(1, Result));
        SendAll(pipe, bytes);
    } catch (const InputError& error) {
        SendAll(pipe, std::string(1, Refused) + error.what());
    } catch (const std::bad_alloc&) {
        SendAll(pipe, std::string(1, NoMemory));
    } catch (...) {
        _exit(1);
    }
    _exit(0);
}

/// Reads until the other end closes the pipe. @return false when the time limit ends before that.
bool ReceiveAll(int pipe, Clock::time_point deadline, std::string& bytes) {
    std::string buffer(1 << 16, '\0');
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd waiting{pipe, POLLIN, 0};
        if (left <= 0 || poll(&waiting, 1, static_cast<int>(std::min<long>(left, 1000000))) == 0) {
            return false;
        }
        const ssize_t count = read(pipe, buffer.data(), buffer.size());
        if (count == 0) {
            return true;
        }
        bytes.append(buffer, 0, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

int Wait(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

[[noreturn]] void RefuseSystem(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

std::string Unpack(const std::string& bytes, int status) {
    if (WIFSIGNALED(status)) {
        throw ChildFailure(std::string("crashes its reader (") + strsignal(WTERMSIG(status)) + ")");
    }
    if (status != 0 || bytes.empty()) {
        throw ChildFailure("crashes its reader");
    }
    if (bytes.front() == NoMemory) {
        throw ChildFailure(NoMemoryText);
    }
    if (bytes.front() == Refused) {
        throw InputError(bytes.substr(1));
    }
    return bytes.substr(1);
}

} // namespace

std::string RunInChild(const std::function<std::string()>& work, std::chrono::milliseconds limit) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        RefuseSystem("pipe");
    }
    const Clock::time_point deadline = Clock::now() + limit;
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        PrepareChild(parent);
        RunAndSend(work, ends[1]);
    }
    close(ends[1]);
    std::string bytes;
    const bool inTime = child > 0 && ReceiveAll(ends[0], deadline, bytes);
    close(ends[0]);
    if (child < 0) {
        RefuseSystem("fork");
    }
    if (!inTime) {
        kill(child, SIGKILL);
    }
    const int status = Wait(child);
    if (!inTime) {
        throw ChildFailure("takes more than " + Rounded(std::chrono::duration<double>(limit).count(), 3) +
                           " s");
    }
    return Unpack(bytes, status);
}

} // namespace cell
