#pragma once

#include <QString>

#include <optional>

/// What the running program says of itself; absent where it does not say.
namespace AppInfo {

[[nodiscard]] std::optional<QString> shortVersion();
[[nodiscard]] std::optional<QString> build();

}
