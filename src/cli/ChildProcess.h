#pragma once

#include "cli/Pipe.h"

#include <QStringList>

#include <utility>

#include <sys/types.h>

/// A child of this process with a pipe on each of its two output streams. Nothing here blocks. Nobody else may wait for
/// this child; when this object goes away, the child runs on. Main thread only.
class ChildProcess final {
public:
    /// Starts the file `executable` directly, without a shell or the search path, with our environment, working
    /// directory and standard input, and no other descriptor of ours. It has a process group of its own: one that reads
    /// from a terminal of ours is stopped for that, and we are not. Its signals are unblocked and have their default
    /// actions. A name without a slash is not found. Answers the `errno` when there is no child.
    [[nodiscard]] static std::expected<ChildProcess, int> launch(const std::string& executable,
                                                                 const QStringList& arguments);

    /// Takes over a running process.
    ChildProcess(pid_t process, Pipe output, Pipe errors)
        : m_process{process}
        , m_output{std::move(output.reading)}
        , m_errors{std::move(errors.reading)} {}

    /// Also true of one that a debugger holds, which the system hides from its parent meanwhile.
    [[nodiscard]] bool isRunning();

    /// Asks the child to end (SIGTERM), also when it is stopped; what it has started is not asked. Nothing happens once
    /// it was seen to have ended.
    void terminate() const;

    /// See `readText()`. A stream may outlive the child when that left children of its own. At most once each.
    [[nodiscard]] QCoro::Task<std::optional<QString>> readOutput() { return readText(std::move(m_output)); }
    [[nodiscard]] QCoro::Task<std::optional<QString>> readErrors() { return readText(std::move(m_errors)); }

    /// Of a child that was seen to have ended: its status, or the number of the signal that ended it; `unknownStatus`
    /// when somebody else waited for it.
    [[nodiscard]] int status() const { return m_status; }

    static constexpr int unknownStatus = -1;

private:
    std::optional<pid_t> m_process; ///< none once it was waited for: the number may be another's then
    Descriptor m_output;
    Descriptor m_errors;
    int m_status = unknownStatus;
};
