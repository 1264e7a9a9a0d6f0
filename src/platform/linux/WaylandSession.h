#pragma once

#include <QtGlobal>

/// A session whose desktop speaks Wayland.
namespace WaylandSession {

/// True also where the companion itself is a guest of the desktop's X server.
[[nodiscard]] inline bool isOurs() {
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

}
