#include "ui/kit/ApplicationAccessible.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QWidget>

namespace {

QList<QAccessibleInterface*> shownWindows() {
    QList<QAccessibleInterface*> windows;
    const auto widgets = QApplication::topLevelWidgets();
    for (auto* widget : widgets) {
        if (widget->isVisible()) {
            windows.append(QAccessible::queryAccessibleInterface(widget));
        }
    }
    return windows;
}

/// Asked for the class of an object, then for each class above it; a plain widget is asked for last.
QAccessibleInterface* interfaceOf(const QString& className, QObject* object) {
    if (object == QCoreApplication::instance()) {
        return new ApplicationAccessible;
    }
    auto* widget = qobject_cast<QWidget*>(object);
    const bool isPlainWindow = widget != nullptr && widget->isWindow() && className == u"QWidget";
    return isPlainWindow ? new QAccessibleWidget{widget, QAccessible::Window} : nullptr;
}

}

void ApplicationAccessible::install() {
    QAccessible::installFactory(interfaceOf);
}

int ApplicationAccessible::childCount() const {
    return static_cast<int>(shownWindows().size());
}

int ApplicationAccessible::indexOfChild(const QAccessibleInterface* child) const {
    return static_cast<int>(shownWindows().indexOf(child));
}

QAccessibleInterface* ApplicationAccessible::child(int index) const {
    return shownWindows().value(index);
}

QAccessibleInterface* ApplicationAccessible::focusChild() const {
    auto* focused = QApplication::focusWidget();
    return focused != nullptr ? QAccessible::queryAccessibleInterface(focused->window()) : nullptr;
}
