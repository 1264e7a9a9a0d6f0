#pragma once

#include <QAccessibleWidget>

class QAbstractButton;

/// A button as assistive programs see it; one that can be checked is one choice of several. Every press is a click,
/// also of a choice that is made already, where what the toolkit offers does nothing, and however soon after another,
/// where it takes two within a tenth of a second for one.
class ButtonAccessible final : public QAccessibleWidget {
public:
    explicit ButtonAccessible(QAbstractButton& button);

    [[nodiscard]] QAccessible::Role
    role() const override; ///< also of one that becomes a choice only after it was asked
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& action) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& action) const override;

private:
    [[nodiscard]] QString shortcut() const;

    QAbstractButton& m_button;
};
