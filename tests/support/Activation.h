#pragma once

#include <QTest>
#include <QWidget>

/// Shows the window and gives it the keyboard.
inline void activate(QWidget& window) {
    window.show();
    window.activateWindow();
    if (!QTest::qWaitFor([&window] { return window.isActiveWindow(); })) {
        qFatal("the window does not become active");
    }
}
