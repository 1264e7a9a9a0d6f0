#pragma once

#include <QByteArray>
#include <QUrl>

class QWindow;

/// What a process does once, or asks of the desktop as a whole.
namespace Launch {

/// The window systems to try one after another, in the words of QT_QPA_PLATFORM; empty where that is Qt's to decide, or
/// the user has decided. It is of use only before the application object is there.
[[nodiscard]] QByteArray windowSystems();

/// No Dock icon, no task-bar entry, no application menu bar.
void becomeAccessory();

/// Hands an address to the desktop, which opens it in the program that the user chose for it. Returns at once.
void openUrl(const QUrl& url);

/// Brings one of our windows in front of every other program's and gives it the keyboard.
void bringToFront(QWindow& window);

}
