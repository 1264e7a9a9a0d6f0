#pragma once

#include <QUrl>

class QWindow;

/// What a process does once, or asks of the desktop as a whole.
namespace Launch {

/// No Dock icon, no task-bar entry, no application menu bar.
void becomeAccessory();

/// Hands an address to the desktop, which opens it in the program that the user chose for it. Returns at once.
void openUrl(const QUrl& url);

/// Brings one of our windows in front of every other program's and gives it the keyboard.
void bringToFront(QWindow& window);

}
