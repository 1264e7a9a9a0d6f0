#include "ui/kit/LabelAccessible.h"

#include <QLabel>

LabelAccessible::LabelAccessible(QLabel& label)
    : QAccessibleWidget{&label, QAccessible::StaticText}
    , m_label{label} {}

QString LabelAccessible::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Name) {
        return QAccessibleWidget::text(kind);
    }
    return m_label.accessibleName().isEmpty() ? m_label.text() : m_label.accessibleName();
}

QList<QPair<QAccessibleInterface*, QAccessible::Relation>>
LabelAccessible::relations(QAccessible::Relation match) const {
    auto found = QAccessibleWidget::relations(match);
    if (m_label.buddy() != nullptr && match.testFlag(QAccessible::Labelled)) {
        found.append({QAccessible::queryAccessibleInterface(m_label.buddy()), QAccessible::Labelled});
    }
    return found;
}
