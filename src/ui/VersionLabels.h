#pragma once

#include <QString>

#include <optional>

/// How a program's version is written; "?" stands for what is not known. Without arguments it is this program's.
namespace VersionLabels {

/// "v1.2 (7)"
[[nodiscard]] QString caption(const std::optional<QString>& shortVersion, const std::optional<QString>& build);
[[nodiscard]] QString caption();

/// "v1.2 (build 7)"
[[nodiscard]] QString label(const std::optional<QString>& shortVersion, const std::optional<QString>& build);
[[nodiscard]] QString label();

}
