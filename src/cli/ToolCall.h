#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// How one run of the command-line tool went, as bytes.
struct ToolOutcome final {
    std::int32_t exitCode = 0;
    std::string output;
    std::string errors;
};

/// The tool's name, without a directory.
inline constexpr char toolName[] = "vorna";

/// The outcome when the tool, taken to be at `executable`, could not be started for the reason of this `errno`: exit
/// code 127, and in `errors` a sentence for a person.
[[nodiscard]] ToolOutcome launchFailure(const std::string& executable, int error);

/// Runs the tool at `executable`, ends it when it outlives `timeout` seconds, and only then reads what it wrote. Waits
/// for all of that: for a thread of its own. Throws `std::system_error` when there is no thread for its watchdog.
[[nodiscard]] ToolOutcome callTool(const std::string& executable, const std::vector<std::string>& arguments,
                                   double timeout);
