#pragma once

#include <QAccessibleWidget>

class QLabel;

/// A text or a dot as assistive programs see it: it says what it shows, letter by letter. What the toolkit itself
/// offers drops ampersands from a text that names another one, and lets that name stand for the other while it is
/// empty.
class LabelAccessible final : public QAccessibleWidget {
public:
    explicit LabelAccessible(QLabel& label);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QList<QPair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override;

private:
    QLabel& m_label;
};
