#pragma once

#include <QAccessible>
#include <QPushButton>
#include <QStringList>
#include <QWidget>

/// The panel as a screen reader finds it.
namespace PanelReading {

inline void collect(QAccessibleInterface* item, QStringList& names) {
    if (item == nullptr || item->state().invisible) {
        return;
    }
    const bool isRead =
        item->role() == QAccessible::StaticText || qobject_cast<QPushButton*>(item->object()) != nullptr;
    if (const QString name = item->text(QAccessible::Name); isRead && !name.isEmpty()) {
        names += name;
    }
    for (int i = 0; i < item->childCount(); ++i) {
        collect(item->child(i), names);
    }
}

/// Everything that is shown, in reading order.
[[nodiscard]] inline QStringList names(QWidget& widget) {
    QStringList result;
    collect(QAccessible::queryAccessibleInterface(&widget), result);
    return result;
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

/// The names of the buttons that the Tab key goes through, from the first.
[[nodiscard]] inline QStringList tabOrder(QWidget& widget) {
    QStringList result;
    for (auto* next = widget.nextInFocusChain(); next != &widget; next = next->nextInFocusChain()) {
        if (next->isVisible() && next->isEnabled() && (next->focusPolicy() & Qt::TabFocus) != 0) {
            result += next->accessibleName();
        }
    }
    return result;
}

}
