#include "ui/kit/ApplicationAccessible.h"

#include <QGuiApplication>
#include <QWindow>

namespace {

/// Menus are popups too, but they are told of where they belong.
bool isOfInterest(const QWindow& window, const QAccessibleInterface& root) {
    return window.type() != Qt::Desktop && !(window.type() == Qt::Popup && root.role() == QAccessible::PopupMenu);
}

}

ApplicationAccessible::ApplicationAccessible(QObject* application)
    : QAccessibleObject{application} {}

QAccessibleInterface* ApplicationAccessible::create(const QString&, QObject* object) {
    return object == QCoreApplication::instance() ? new ApplicationAccessible{object} : nullptr;
}

QList<QAccessibleInterface*> ApplicationAccessible::roots() {
    QList<QAccessibleInterface*> found;
    for (const auto* window : QGuiApplication::topLevelWindows()) {
        auto* const root = window->accessibleRoot();
        if (root != nullptr && root->object() != nullptr && isOfInterest(*window, *root)) {
            found.append(root);
        }
    }
    return found;
}

QWindow* ApplicationAccessible::window() const {
    return nullptr;
}

QAccessibleInterface* ApplicationAccessible::parent() const {
    return nullptr;
}

int ApplicationAccessible::childCount() const {
    return static_cast<int>(roots().size());
}

QAccessibleInterface* ApplicationAccessible::child(int index) const {
    return roots().value(index);
}

int ApplicationAccessible::indexOfChild(const QAccessibleInterface* child) const {
    return static_cast<int>(roots().indexOf(child));
}

QAccessibleInterface* ApplicationAccessible::focusChild() const {
    const auto* const window = QGuiApplication::focusWindow();
    return window != nullptr ? window->accessibleRoot() : nullptr;
}

QString ApplicationAccessible::text(QAccessible::Text kind) const {
    return kind == QAccessible::Name ? QGuiApplication::applicationDisplayName() : QString{};
}

QAccessible::Role ApplicationAccessible::role() const {
    return QAccessible::Application;
}

QAccessible::State ApplicationAccessible::state() const {
    return {};
}
