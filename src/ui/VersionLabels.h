#pragma once

#include "platform/AppInfo.h"

#include <QString>

#include <optional>

/// How a program's version is written, this program's unless told; "?" stands for what is not known.
namespace VersionLabels {

/// "v1.2 (7)"
[[nodiscard]] QString caption(const std::optional<QString>& shortVersion = AppInfo::shortVersion(),
                              const std::optional<QString>& build = AppInfo::build());

/// "v1.2 (build 7)"
[[nodiscard]] QString label(const std::optional<QString>& shortVersion = AppInfo::shortVersion(),
                            const std::optional<QString>& build = AppInfo::build());

}
