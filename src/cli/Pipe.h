#pragma once

#include "cli/Descriptor.h"

#include <expected>
#include <string>

/// A pipe of this process that no child inherits.
struct Pipe final {
    Descriptor reading;
    Descriptor writing;

    /// Opens a pipe whose ends are none of the standard three, so that they can be handed on as one of these; or
    /// answers the `errno`.
    [[nodiscard]] static std::expected<Pipe, int> open();
};

/// Waits for all that is written to the pipe of this reading end, until every writing end is closed.
[[nodiscard]] std::string readToEnd(const Descriptor& reading);
