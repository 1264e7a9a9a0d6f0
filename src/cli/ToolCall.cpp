#include "cli/ToolCall.h"

#include "cli/ChildProcess.h"
#include "cli/Watchdog.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <unistd.h>

namespace {

constexpr std::int32_t launchFailureExitCode = 127;

std::string reason(const std::string& executable, int error) {
    const bool exists = executable.contains('/') && access(executable.c_str(), F_OK) == 0;
    switch (error) {
    case ENOENT:
        return exists ? "could not be started: the program that it needs is missing" : "could not be found";
    case EACCES:
        return "is not executable";
    default:
        return "could not be started: " + std::generic_category().message(error);
    }
}

}

ToolOutcome launchFailure(const std::string& executable, int error) {
    const std::string subject = std::string{"The command “"} + toolName + "” ";
    return {.exitCode = launchFailureExitCode, .output = {}, .errors = subject + reason(executable, error) + "."};
}

ToolOutcome callTool(const std::string& executable, const std::vector<std::string>& arguments, double timeout) {
    Watchdog watchdog;
    auto child = ChildProcess::launch(executable, arguments);
    if (!child) {
        return launchFailure(executable, child.error());
    }
    watchdog.watch(*child, timeout);
    auto streams = child->readStreams();
    return {.exitCode = child->waitForExit(), .output = std::move(streams.output), .errors = std::move(streams.errors)};
}
