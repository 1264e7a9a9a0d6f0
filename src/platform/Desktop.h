#pragma once

#include <qnamespace.h>

class QUrl;
class QWindow;

/// What the program asks of the desktop as a whole, and of its own process there. Nothing here waits for an answer.
/// Main thread only.
namespace Desktop {

/// Keeps the toolkit from bringing the program to the front when it has launched. Once, before the application is made.
void prepareLaunch();

/// No Dock icon, task-bar entry or application menu bar; windows open where the user is. Once the application was made.
void becomeAccessory();

/// Hands an address to the desktop, which opens it in the program that the user chose for it.
void openUrl(const QUrl& url);

/// Brings one of our windows, which is shown, in front of every other program's and gives it the keyboard, wherever the
/// user is.
void bringToFront(QWindow& window);

/// Activates the program that was in front before `bringToFront()`, unless a window of ours is still shown. For when
/// the user has dismissed a window; does nothing where the desktop does so by itself.
void activatePreviousProgram();

/// Whether this process may use the accessibility interfaces of other programs. Never asks the user; false where it is
/// not known.
[[nodiscard]] bool trustsAccessibility();

/// The flags that a panel window under the status item needs to stand above all others, take the keyboard, and go away
/// on a click elsewhere.
[[nodiscard]] Qt::WindowFlags panelFlags();

/// Keeps a panel window out of task bar and overview. Each time before it is shown.
void prepareToShowPanel(QWindow& window);

/// Whether the desktop puts the panel where it likes, whatever place the panel asks for.
[[nodiscard]] bool placesPanel();

/// Whether windows are blended with what is behind them, so that a rounded corner can be transparent. Can change while
/// the program runs.
[[nodiscard]] bool blendsWindows();

/// Returns the memory that the allocator holds and nobody uses to the system. Takes about a millisecond.
void releaseUnusedMemory();

}
