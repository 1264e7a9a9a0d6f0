#include "ui/settings/SymbolIcon.h"

#include "platform/DrawnIcon.h"
#include "platform/Symbol.h"

#include <QGuiApplication>
#include <QPalette>

QIcon symbolIcon(const QString& name) {
    return drawnIcon([name](int side) {
        return Symbol::pixmap(name, side, QGuiApplication::palette().color(QPalette::WindowText), 1);
    });
}
