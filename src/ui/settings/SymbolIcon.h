#pragma once

#include "platform/DrawnIcon.h"
#include "platform/Symbol.h"

#include <QGuiApplication>
#include <QPalette>

/// A symbol as an icon of a control that the style draws: in the colour of the desktop's text, whatever that becomes.
[[nodiscard]] inline QIcon symbolIcon(const QString& name) {
    return drawnIcon([name](int side) {
        return Symbol::pixmap(name, side, QGuiApplication::palette().color(QPalette::WindowText), 1);
    });
}
