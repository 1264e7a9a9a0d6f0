#pragma once

#include "platform/AppInfo.h"

#include <QString>

#include <optional>

/// How a program's version is written, this program's unless told; "?" stands for what is not known.
namespace VersionLabels {

/// "v1.2 (7)"
[[nodiscard]] inline QString caption(const std::optional<QString>& shortVersion = AppInfo::shortVersion(),
                                     const std::optional<QString>& build = AppInfo::build()) {
    return QStringLiteral("v%1 (%2)")
        .arg(shortVersion.value_or(QStringLiteral("?")), build.value_or(QStringLiteral("?")));
}

/// "v1.2 (build 7)"
[[nodiscard]] inline QString label(const std::optional<QString>& shortVersion = AppInfo::shortVersion(),
                                   const std::optional<QString>& build = AppInfo::build()) {
    return QStringLiteral("v%1 (build %2)")
        .arg(shortVersion.value_or(QStringLiteral("?")), build.value_or(QStringLiteral("?")));
}

}
