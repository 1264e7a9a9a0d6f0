#include "platform/AppInfo.h"

std::optional<QString> AppInfo::shortVersion() {
    return QStringLiteral(VORNA_VERSION);
}

std::optional<QString> AppInfo::build() {
    return QStringLiteral(VORNA_BUILD);
}
