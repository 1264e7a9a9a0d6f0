#pragma once

#include <QStringList>

/// What the environment says of the desktop's session.
namespace Session {

/// The names of the running desktop, the most specific first.
[[nodiscard]] QStringList desktops();

/// True also where the companion itself is a guest of the desktop's X server.
[[nodiscard]] bool isWayland();

/// On Wayland these leave a guest of their X server the place of its windows; other compositors do not.
[[nodiscard]] bool isPlasmaOrGnome();

/// On Wayland most compositors draw the frames of windows; GNOME's, and those made of it, leave that to the programs.
[[nodiscard]] bool drawsFrames();

}
