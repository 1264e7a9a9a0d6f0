#pragma once

#include "cli/Descriptor.h"

#include <expected>
#include <initializer_list>
#include <string>

/// A pipe of this process that no child inherits.
struct Pipe final {
    Descriptor reading;
    Descriptor writing;

    /// Opens a pipe whose ends are none of the standard three, so that they can be handed on as one of these; or
    /// answers the `errno`.
    [[nodiscard]] static std::expected<Pipe, int> open();
};

/// What one reading takes at most: a limit for a writer without end, far beyond what anybody would read.
inline constexpr std::size_t mostBytesRead = 16UL * 1024 * 1024;

/// The reading end of a pipe, and where what comes out of it goes.
struct Reading final {
    Descriptor& from;
    std::string& into;
};

/// Waits for all that is written to these pipes, for each until every writing end is closed or `mostBytesRead` have
/// come, and closes it: who writes on finds the pipe broken. They are read side by side, so that a writer who has
/// filled one of them does not wait while another is held open. A text that was cut ends with a whole character of
/// UTF-8.
void readToEnd(std::initializer_list<Reading> readings);
