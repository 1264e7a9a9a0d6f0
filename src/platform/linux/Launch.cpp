#include "platform/Launch.h"

#include <QDesktopServices>
#include <QWindow>

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

void Launch::giveKeyboardBack() {}
