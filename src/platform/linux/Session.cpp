#include "platform/linux/Session.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace Session {

QStringList desktops() {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
}

bool isWayland() {
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool isPlasmaOrGnome() {
    return desktops().contains("KDE"_L1) || desktops().contains("GNOME"_L1);
}

}
