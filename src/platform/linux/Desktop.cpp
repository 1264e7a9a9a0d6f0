#include "platform/Desktop.h"

#include "platform/linux/ColourScheme.h"
#include "platform/linux/Session.h"
#include "platform/linux/X11.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto windowSystem = "QT_QPA_PLATFORM";
constexpr auto guestFirst = "xcb;wayland";
constexpr auto noFrames = "QT_WAYLAND_DISABLE_WINDOWDECORATION";

bool isOnX11() {
    return QGuiApplication::platformName() == u"xcb"_s;
}

/// Qt loads EGL, 18 MB with Mesa in software, only to learn whether it may draw frames itself. It asks the environment
/// first, once, for the first native window: an unseen one, so that no other program inherits the answer.
void leaveFramesToCompositor() {
    if (QGuiApplication::platformName() != u"wayland"_s || !Session::drawsFrames() ||
        qEnvironmentVariableIsSet(noFrames)) {
        return;
    }
    qputenv(noFrames, "1");
    QWindow unseen;
    unseen.create();
    unseen.setFlags(Qt::FramelessWindowHint);
    qunsetenv(noFrames);
}

/// Whether it is a guest of a desktop that leaves it the place of its windows.
bool isPlacedGuest() {
    return isOnX11() && Session::isWayland() && Session::isPlasmaOrGnome();
}

}

namespace Desktop {

void prepareLaunch() {
    const bool isChosen = !qEnvironmentVariableIsEmpty(windowSystem);
    if (Session::isWayland() && Session::isPlasmaOrGnome() && !qEnvironmentVariableIsEmpty("DISPLAY") && !isChosen) {
        qputenv(windowSystem, guestFirst);
    }
}

// Here it is a window that has an entry in the task bar, not a process: the panel's flags keep it out of there, and
// the settings window belongs there while it is open.
void becomeAccessory() {
    if (qgetenv(windowSystem) == guestFirst) {
        qunsetenv(windowSystem); // it was for this program alone, and not for those that it starts
    }
    leaveFramesToCompositor();
    new ColourScheme{qGuiApp};
}

void openUrl(const QUrl& url) {
    QDesktopServices::openUrl(url);
}

void bringToFront(QWindow& window) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
    if (isOnX11()) {
        X11::activate(static_cast<xcb_window_t>(window.winId()));
    }
}

void activatePreviousProgram() {}

bool trustsAccessibility() {
    return false;
}

Qt::WindowFlags panelFlags() {
    // A popup takes pointer and keyboard by itself; a window manager may keep the focus from any other new window.
    // Plasma and GNOME do not, but the one would show its notifications behind a popup, and the other holds the
    // keyboard itself in the moment of a double click.
    if (isOnX11() && !Session::isWayland() && !Session::isPlasmaOrGnome()) {
        return Qt::Popup | Qt::FramelessWindowHint;
    }
    return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

void prepareToShowPanel(QWindow& window) {
    if (isOnX11()) {
        X11::keepOffTaskBar(static_cast<xcb_window_t>(window.winId()));
    }
}

bool placesPanel() {
    return Session::isWayland() && !isPlacedGuest();
}

bool blendsWindows() {
    return X11::connection() == nullptr || X11::ownerOfScreenSelection("_NET_WM_CM_S") != XCB_WINDOW_NONE;
}

void releaseUnusedMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}
