#include "ui/kit/ApplicationAccessible.h"

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

QAccessibleInterface* forApplication(const QString&, QObject* object) {
    return object == QCoreApplication::instance() ? new ApplicationAccessible : nullptr;
}

}

void ApplicationAccessible::install() {
    QAccessible::installFactory(forApplication);
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
