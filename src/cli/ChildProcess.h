#pragma once

#include "cli/Descriptor.h"

#include <expected>
#include <string>
#include <vector>

#include <sys/types.h>

/// One running child of this process, with a pipe on each of its two output streams and our standard input and
/// environment. Plain POSIX, no Qt: for any thread. Nobody else may wait for this child; its process id stays its own
/// until `waitForExit()`, so `isRunning()` and `terminate()` are safe on a second thread until then.
class ChildProcess final {
public:
    /// What a child wrote.
    struct Streams final {
        std::string output;
        std::string errors;
    };

    /// Starts the file `executable` directly, without a shell or the search path. Its signals are unblocked and have
    /// their default actions; it inherits no other descriptor of ours. A name without a slash is never a file of the
    /// current directory: it is not found. Answers the `errno` when there is no child.
    [[nodiscard]] static std::expected<ChildProcess, int> launch(const std::string& executable,
                                                                 const std::vector<std::string>& arguments);

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess();

    [[nodiscard]] bool isRunning() const;

    /// Asks the child to end (SIGTERM) and does not wait.
    void terminate() const;

    /// Waits for the end of one stream, or of both, which may outlive the child when it left children of its own; takes
    /// no more than `mostBytesRead` of each, and closes it.
    [[nodiscard]] std::string readOutput();
    [[nodiscard]] Streams readStreams();

    /// Waits for the child's end: its status, or the number of the signal that ended it. The second call and later
    /// ones, like one whose answer somebody else took, give `unknownStatus`.
    [[nodiscard]] int waitForExit();

    static constexpr int unknownStatus = -1;

private:
    ChildProcess(pid_t process, Descriptor output, Descriptor errors);

    pid_t m_process;
    Descriptor m_output;
    Descriptor m_errors;
};
