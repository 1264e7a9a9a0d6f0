#pragma once

#include "ui/kit/TextLabel.h"

/// A text that can be selected with the mouse and copied. With the keyboard it is reached by Tab, which selects
/// `command`, the part of it that is worth copying.
class SelectableLabel final : public TextLabel {
    Q_OBJECT

public:
    SelectableLabel(const TextStyle& style, const Colours& colours, QWidget* parent = nullptr);

    /// Displays the text; `command` is a part of it, or all of it where it is empty.
    void display(const QString& text, const QString& command = {});

    [[nodiscard]] QString selectedText() const;

protected:
    [[nodiscard]] QList<QTextLayout::FormatRange> highlights() const override;

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void select(int from, int to);
    void selectCommand();

    QString m_command;
    int m_from = 0;
    int m_to = 0;
};
