#pragma once

#include <QUrl>

class QWindow;

/// What a process does once, or asks of the desktop as a whole.
namespace Launch {

/// No Dock icon, no task-bar entry, no application menu bar.
void becomeAccessory();

/// Hands an address to the desktop, which opens it in the program that the user chose for it. Returns at once.
void openUrl(const QUrl& url);

/// Brings one of our windows, which is shown, in front of every other program's and gives it the keyboard, wherever the
/// user is.
void bringToFront(QWindow& window);

/// Hands the keyboard back to the program that had it before `bringToFront()`, unless a window of ours is still shown.
/// For when the user has left a window; does nothing where the desktop does so by itself.
void giveKeyboardBack();

}
