#pragma once

#include <QString>

#include <optional>

/// How the program's version is written; "?" stands for what is not known.
namespace VersionLabels {

/// "v1.2 (7)"
[[nodiscard]] QString caption(const std::optional<QString>& shortVersion, const std::optional<QString>& build);

/// "v1.2 (build 7)"
[[nodiscard]] QString label(const std::optional<QString>& shortVersion, const std::optional<QString>& build);

}
