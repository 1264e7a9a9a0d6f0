#include "platform/AppInfo.h"

#include <QSysInfo>

QString AppInfo::name() {
    return QStringLiteral("vorna for Linux");
}

QString AppInfo::architecture() {
    return QSysInfo::currentCpuArchitecture() + QStringLiteral(" · Linux");
}

QString AppInfo::requirement() {
    return {};
}

std::optional<QString> AppInfo::shortVersion() {
    return QStringLiteral(VORNA_VERSION);
}

std::optional<QString> AppInfo::build() {
    return QStringLiteral(VORNA_BUILD);
}
