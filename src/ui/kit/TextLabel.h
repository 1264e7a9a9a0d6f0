#pragma once

#include "ui/kit/TextFitting.h"
#include "ui/kit/TextStyle.h"

#include <QColor>
#include <QLabel>
#include <QTextLayout>

/// A plain text in one style and one colour. It never asks for width: it takes what it is given, wraps or shrinks as
/// its style allows, and cuts the rest with an ellipsis, at the edge that QLabel's alignment names. Its accessible name
/// is always the whole text; a tool tip shows it when it had to be cut. Its line height is the style's, whatever the
/// text holds.
class TextLabel final : public QLabel {
    Q_OBJECT

public:
    explicit TextLabel(const TextStyle& style, QWidget* parent = nullptr);

    void display(const QString& text);
    void setColour(const QColor& colour);

    [[nodiscard]] const QString& wholeText() const { return m_text; }
    [[nodiscard]] const QColor& colour() const { return m_colour; }
    [[nodiscard]] const TextStyle& textStyle() const { return m_style; }

    /// The text as it is drawn at the present width, lines apart by U+2028.
    [[nodiscard]] QString shownText() const;
    [[nodiscard]] bool isCut() const;

    /// The size of the letters as drawn, relative to the style's.
    [[nodiscard]] qreal shownScale() const;

    [[nodiscard]] int lineHeight() const { return m_lineHeight; }

    /// The width that the text takes in one line, rounded up.
    [[nodiscard]] int naturalWidth() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Shown {
        int width = -1;
        QString text;
        bool isCut = false;
        qreal scale = 1;
    };

    void prepare(int width) const;
    void layOut() const;

    const TextStyle m_style;
    const QFont m_font;
    int m_lineHeight = 0;
    QString m_text;
    TextFitting::Beginning m_beginning;
    QColor m_colour;
    mutable int m_naturalWidth = -1;
    mutable Shown m_shown;
    mutable QTextLayout m_layout;
};
