#pragma once

/// The application as assistive programs see it, with every window that shows: Qt leaves out the popups, and the panel
/// is one on some desktops. Our own windows say that they are windows, buttons are pressed by clicks, labels say what
/// they show, and what lets clicks through only adorns and is passed over.
namespace ApplicationAccessible {

/// Once, before the first window.
void install();

}
