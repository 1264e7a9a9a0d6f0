#include "cli/ChildProcess.h"

#include "cli/Pipe.h"
#include "platform/ChildDescriptors.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <utility>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ; // NOLINT(readability-redundant-declaration): glibc declares it too, the Mac does not.

namespace {

constexpr pid_t noProcess = 0;

/// What `posix_spawn` is told about the new process, freed with this object.
class SpawnPlan final {
public:
    SpawnPlan() {
        note(posix_spawn_file_actions_init(&m_actions));
        note(posix_spawnattr_init(&m_attributes));
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }

    void connectStreams(const Descriptor& output, const Descriptor& errors) {
        note(posix_spawn_file_actions_adddup2(&m_actions, output.number(), STDOUT_FILENO));
        note(posix_spawn_file_actions_adddup2(&m_actions, errors.number(), STDERR_FILENO));
        note(ChildDescriptors::inheritNothingElse(m_actions, m_flags));
    }

    void resetSignals() {
        sigset_t blocked;
        sigemptyset(&blocked);
        sigset_t defaulted;
        sigfillset(&defaulted);
        sigdelset(&defaulted, SIGKILL);
        sigdelset(&defaulted, SIGSTOP);
        note(posix_spawnattr_setsigmask(&m_attributes, &blocked));
        note(posix_spawnattr_setsigdefault(&m_attributes, &defaulted));
        m_flags = static_cast<short>(m_flags | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    std::expected<pid_t, int> start(const std::string& executable, std::vector<char*> argumentVector) {
        note(posix_spawnattr_setflags(&m_attributes, m_flags));
        pid_t process = noProcess;
        if (m_error == 0) {
            note(posix_spawn(&process, executable.c_str(), &m_actions, &m_attributes, argumentVector.data(), environ));
        }
        if (m_error != 0) {
            return std::unexpected{m_error};
        }
        return process;
    }

private:
    void note(int error) { m_error = m_error == 0 ? error : m_error; }

    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
    short m_flags = 0;
    int m_error = 0;
};

std::vector<char*> argumentVector(const std::string& executable, const std::vector<std::string>& arguments) {
    std::vector<char*> pointers{const_cast<char*>(executable.c_str())};
    std::ranges::transform(arguments, std::back_inserter(pointers),
                           [](const std::string& argument) { return const_cast<char*>(argument.c_str()); });
    pointers.push_back(nullptr);
    return pointers;
}

/// A program that was started with SIGCHLD ignored, and passes that on to us, would cost us every exit status.
void keepExitStatuses() {
    struct sigaction action{};
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && (action.sa_flags & SA_SIGINFO) == 0 &&
        action.sa_handler == SIG_IGN) {
        action.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &action, nullptr);
    }
}

}

std::expected<ChildProcess, int> ChildProcess::launch(const std::string& executable,
                                                      const std::vector<std::string>& arguments) {
    if (!executable.contains('/')) {
        return std::unexpected{ENOENT};
    }
    auto output = Pipe::open();
    auto errors = output ? Pipe::open() : std::unexpected{output.error()};
    if (!errors) {
        return std::unexpected{errors.error()};
    }
    keepExitStatuses();
    SpawnPlan plan;
    plan.connectStreams(output->writing, errors->writing);
    plan.resetSignals();
    const auto process = plan.start(executable, argumentVector(executable, arguments));
    if (!process) {
        return std::unexpected{process.error()};
    }
    return ChildProcess{*process, std::move(output->reading), std::move(errors->reading)};
}

ChildProcess::ChildProcess(pid_t process, Descriptor output, Descriptor errors)
    : m_process{process}
    , m_output{std::move(output)}
    , m_errors{std::move(errors)} {}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : m_process{std::exchange(other.m_process, noProcess)}
    , m_output{std::move(other.m_output)}
    , m_errors{std::move(other.m_errors)} {}

ChildProcess::~ChildProcess() {
    m_output.close();
    m_errors.close();
    (void)waitForExit();
}

bool ChildProcess::isRunning() const {
    siginfo_t change{};
    int answer = 0;
    do {
        answer = waitid(P_PID, static_cast<id_t>(m_process), &change, WEXITED | WNOHANG | WNOWAIT);
    } while (answer == -1 && errno == EINTR);
    return answer == 0 && change.si_pid == 0;
}

void ChildProcess::terminate() const {
    kill(m_process, SIGTERM);
}

std::string ChildProcess::readOutput() {
    std::string output;
    readToEnd({{m_output, output}});
    return output;
}

ChildProcess::Streams ChildProcess::readStreams() {
    Streams streams;
    readToEnd({{m_output, streams.output}, {m_errors, streams.errors}});
    return streams;
}

int ChildProcess::waitForExit() {
    const pid_t process = std::exchange(m_process, noProcess);
    if (process == noProcess) {
        return unknownStatus;
    }
    int status = 0;
    pid_t answer = 0;
    do {
        answer = waitpid(process, &status, 0);
    } while (answer == -1 && errno == EINTR);
    if (answer != process) {
        return unknownStatus;
    }
    return WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
}
