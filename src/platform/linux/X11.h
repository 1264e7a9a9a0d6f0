#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

/// What the tray asks of the X server, over the connection that Qt holds. Main thread only.
namespace X11 {

/// Nothing where the program does not run on X11.
[[nodiscard]] xcb_connection_t* connection();

/// The atom of that name; none where the program does not run on X11.
[[nodiscard]] xcb_atom_t atom(const QByteArray& name);

/// The atom of a role of our screen, such as "_NET_SYSTEM_TRAY_S" with the screen's number behind it.
[[nodiscard]] xcb_atom_t screenSelection(const QByteArray& prefix);

/// The window that plays this role now, or none.
[[nodiscard]] xcb_window_t ownerOfScreenSelection(const QByteArray& prefix);

/// Keeps a window that is not shown yet out of the task bar and of what switches between windows, until it is hidden.
void keepOffTaskBar(xcb_window_t window);

/// Asks the window manager to give a window that shows the keyboard, as on the user's own word. A program that only
/// asks for itself may be refused, since it was another one's icon that the user has clicked.
void activate(xcb_window_t window);

/// Asks to be told when the window goes; false when it has gone already.
[[nodiscard]] bool watchForDestruction(xcb_window_t window);

}
