#include "platform/Launch.h"

#include "platform/linux/WaylandSession.h"

#include <QDesktopServices>
#include <QWindow>

// Qt would be a guest of the X server on some of these desktops, where it hears of no click outside its own windows,
// does not know where the pointer is, and is drawn unsharp on a scaled screen.
QByteArray Launch::windowSystems() {
    const bool isQtsChoice = qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !WaylandSession::isOurs();
    return isQtsChoice ? QByteArray{} : QByteArrayLiteral("wayland;xcb");
}

// Here it is a window that has an entry in the task bar, not a process: the panel's flags keep it out of there, and
// the settings window belongs there while it is open.
void Launch::becomeAccessory() {}

void Launch::openUrl(const QUrl& url) {
    QDesktopServices::openUrl(url);
}

void Launch::bringToFront(QWindow& window) {
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    window.requestActivate();
}
