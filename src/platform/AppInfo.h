#pragma once

#include <QString>

#include <optional>

/// What the running program says of itself; absent where it does not say.
namespace AppInfo {

/// "vorna for Mac"
[[nodiscard]] QString name();

/// What it runs on: "arm64 · Apple Silicon"
[[nodiscard]] QString architecture();

/// A sentence, and a space, on the machines that it is limited to; empty where it is not.
[[nodiscard]] QString requirement();

[[nodiscard]] std::optional<QString> shortVersion();
[[nodiscard]] std::optional<QString> build();

}
