#include "cli/ChildProcess.h"

#include "platform/ChildDescriptors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <vector>

#include <spawn.h>
#include <sys/wait.h>

extern char** environ; // NOLINT(readability-redundant-declaration): glibc declares it too, the Mac does not.

namespace {

/// What `posix_spawn` is told about the new process, freed with this object.
class SpawnPlan final {
public:
    SpawnPlan(const Descriptor& output, const Descriptor& errors) {
        sigset_t blocked;
        sigemptyset(&blocked);
        sigset_t defaulted;
        sigfillset(&defaulted);
        sigdelset(&defaulted, SIGKILL);
        sigdelset(&defaulted, SIGSTOP);
        short flags = POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
        const std::array failures{
            posix_spawn_file_actions_init(&m_actions),
            posix_spawnattr_init(&m_attributes),
            posix_spawn_file_actions_adddup2(&m_actions, output.number(), STDOUT_FILENO),
            posix_spawn_file_actions_adddup2(&m_actions, errors.number(), STDERR_FILENO),
            ChildDescriptors::inheritNothingElse(m_actions, flags),
            posix_spawnattr_setpgroup(&m_attributes, 0),
            posix_spawnattr_setsigmask(&m_attributes, &blocked),
            posix_spawnattr_setsigdefault(&m_attributes, &defaulted),
            posix_spawnattr_setflags(&m_attributes, flags),
        };
        m_failure = *std::ranges::max_element(failures);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }

    /// Answers the `errno`, or 0.
    [[nodiscard]] int start(pid_t& process, std::vector<std::string> words) const {
        std::vector<char*> pointers;
        std::ranges::transform(words, std::back_inserter(pointers), [](std::string& word) { return word.data(); });
        pointers.push_back(nullptr);
        return m_failure != 0
                   ? m_failure
                   : posix_spawn(&process, pointers.front(), &m_actions, &m_attributes, pointers.data(), environ);
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
    int m_failure = 0;
};

/// A program that was started with SIGCHLD ignored, and passes that on to us, would cost us every exit status.
void keepExitStatuses() {
    struct sigaction action{};
    if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) {
        action.sa_handler = SIG_DFL;
        sigaction(SIGCHLD, &action, nullptr);
    }
}

}

std::expected<ChildProcess, int> ChildProcess::launch(const std::string& executable, const QStringList& arguments) {
    if (!executable.contains('/')) {
        return std::unexpected{ENOENT};
    }
    auto output = Pipe::open();
    auto errors = output ? Pipe::open() : std::unexpected{output.error()};
    if (!errors) {
        return std::unexpected{errors.error()};
    }
    std::vector<std::string> words{executable};
    std::ranges::transform(arguments, std::back_inserter(words), &QString::toStdString);
    keepExitStatuses();
    pid_t process = 0;
    if (const int failure = SpawnPlan{output->writing, errors->writing}.start(process, std::move(words))) {
        return std::unexpected{failure};
    }
    return ChildProcess{process, std::move(*output), std::move(*errors)};
}

bool ChildProcess::isRunning() {
    if (!m_process) {
        return false;
    }
    int status = 0;
    const pid_t answer = waitpid(*m_process, &status, WNOHANG);
    if (answer == 0 || (answer == -1 && kill(*m_process, 0) == 0)) {
        return true;
    }
    if (answer == *m_process) {
        m_status = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
    }
    m_process.reset();
    return false;
}

void ChildProcess::terminate() const {
    if (m_process) {
        kill(*m_process, SIGTERM);
        kill(*m_process, SIGCONT);
    }
}
