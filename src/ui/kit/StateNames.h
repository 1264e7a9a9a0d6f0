#pragma once

#include <QString>

/// What a dot's colour says, in words.
[[nodiscard]] inline QString stateName(bool ok) {
    return ok ? QStringLiteral("ok") : QStringLiteral("not ok");
}
