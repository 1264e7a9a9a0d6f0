#include "platform/linux/Session.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array frameless{"GNOME"_L1, "Pantheon"_L1, "X-Cinnamon"_L1};

}

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

bool drawsFrames() {
    const auto names = desktops();
    return std::ranges::none_of(frameless, [&names](QLatin1StringView name) { return names.contains(name); });
}

}
