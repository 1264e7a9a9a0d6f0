#pragma once

#include <QPushButton>

/// A push button that is painted by its subclass. Its title is its accessible name; Space, Return and Enter press it;
/// a ring shows the keyboard's focus.
class PanelButton : public QPushButton {
    Q_OBJECT

public:
    /// Enables or disables the button. The keyboard's focus is not handed on when it goes away with the button, and
    /// comes back with it.
    void setAvailable(bool isAvailable);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    PanelButton(const QString& title, QWidget* parent);

    [[nodiscard]] QString title() const { return accessibleName(); }
    [[nodiscard]] bool showsFocusRing() const;

    /// Draws the whole button; a disabled one is dimmed by the painter.
    virtual void draw(QPainter& painter) = 0;

    void paintEvent(QPaintEvent* event) final;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    bool m_hasKeyboardFocus = false;
    bool m_lostFocusWithUse = false;
};
