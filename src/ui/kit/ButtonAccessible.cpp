#include "ui/kit/ButtonAccessible.h"

#include <QAbstractButton>
#include <QKeySequence>

ButtonAccessible::ButtonAccessible(QAbstractButton& button)
    : QAccessibleWidget{&button, QAccessible::Button}
    , m_button{button} {}

QAccessible::Role ButtonAccessible::role() const {
    return m_button.isCheckable() ? QAccessible::RadioButton : QAccessible::Button;
}

QString ButtonAccessible::text(QAccessible::Text kind) const {
    QString given = QAccessibleWidget::text(kind);
    if (!given.isEmpty()) {
        return given;
    }
    if (kind == QAccessible::Name) {
        return m_button.text();
    }
    return kind == QAccessible::Accelerator ? shortcut() : QString{};
}

QAccessible::State ButtonAccessible::state() const {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = m_button.isCheckable();
    state.checked = m_button.isChecked();
    state.pressed = m_button.isDown();
    return state;
}

QStringList ButtonAccessible::actionNames() const {
    QStringList names = QAccessibleWidget::actionNames();
    if (m_button.isEnabled()) {
        names.prepend(pressAction());
    }
    return names;
}

void ButtonAccessible::doAction(const QString& action) {
    if (action != pressAction()) {
        QAccessibleWidget::doAction(action);
    } else if (m_button.isEnabled()) {
        // What a click leads to is not to happen within the assistive program's call.
        QMetaObject::invokeMethod(&m_button, &QAbstractButton::click, Qt::QueuedConnection);
    }
}

QStringList ButtonAccessible::keyBindingsForAction(const QString& action) const {
    const QString keys = action == pressAction() ? shortcut() : QString{};
    return keys.isEmpty() ? QStringList{} : QStringList{keys};
}

QString ButtonAccessible::shortcut() const {
    return m_button.shortcut().toString(QKeySequence::NativeText);
}
