#include "platform/Desktop.h"

#include "platform/linux/X11.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QUrl>
#include <QWindow>

#include <malloc.h>

using namespace Qt::StringLiterals;

namespace {

/// True also where the companion itself is a guest of the desktop's X server.
bool isWaylandSession() {
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

}

namespace Desktop {

void prepareLaunch() {}

// Here it is a window that has an entry in the task bar, not a process: the panel's flags keep it out of there, and
// the settings window belongs there while it is open.
void becomeAccessory() {}

void openUrl(const QUrl& url) {
    QDesktopServices::openUrl(url);
}

void bringToFront(QWindow& window) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}

void activatePreviousProgram() {}

bool trustsAccessibility() {
    return false;
}

Qt::WindowFlags panelFlags() {
    // A popup takes pointer and keyboard by itself; a window manager may keep the focus from any other new window.
    if (QGuiApplication::platformName() == u"xcb"_s && !isWaylandSession()) {
        return Qt::Popup | Qt::FramelessWindowHint;
    }
    return Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
}

bool placesPanel() {
    return isWaylandSession();
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
