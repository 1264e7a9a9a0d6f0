#pragma once

#include <QAccessible>
#include <QPushButton>
#include <QStringList>
#include <QWidget>

/// The panel as a screen reader finds it.
namespace PanelReading {

/// Everything that is shown, in reading order.
[[nodiscard]] inline QStringList names(QAccessibleInterface* item) {
    if (item == nullptr || item->state().invisible) {
        return {};
    }
    const bool isRead =
        item->role() == QAccessible::StaticText || qobject_cast<QPushButton*>(item->object()) != nullptr;
    const QString name = isRead ? item->text(QAccessible::Name) : QString{};
    QStringList found = name.isEmpty() ? QStringList{} : QStringList{name};
    for (int i = 0; i < item->childCount(); ++i) {
        found += names(item->child(i));
    }
    return found;
}
[[nodiscard]] inline QStringList names(QWidget& widget) {
    return names(QAccessible::queryAccessibleInterface(&widget));
}

/// The visible widget of that kind with that name.
template <typename Widget>
[[nodiscard]] Widget* named(QWidget& widget, const QString& name) {
    for (auto* candidate : widget.findChildren<Widget*>()) {
        if (candidate->isVisible() && candidate->accessibleName() == name) {
            return candidate;
        }
    }
    return nullptr;
}

}
