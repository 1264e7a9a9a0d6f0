#pragma once

#include "support/Descriptor.h"

#include <QCoro/QCoroTask>

#include <QString>

#include <expected>
#include <optional>

/// A pipe of this process that no child inherits.
struct Pipe final {
    Descriptor reading;
    Descriptor writing;

    /// Opens a pipe whose ends are none of the standard three, so that they can be handed on as one of these; or
    /// answers the `errno`.
    [[nodiscard]] static std::expected<Pipe, int> open();
};

/// Reads the UTF-8 text that is written to this pipe until every writing end is closed, or 16 MiB have come, and closes
/// it; a text that is longer ends with a whole character. Nothing when it is not UTF-8. Main thread only, which it
/// never keeps for longer than a small block takes.
[[nodiscard]] QCoro::Task<std::optional<QString>> readText(Descriptor from);
