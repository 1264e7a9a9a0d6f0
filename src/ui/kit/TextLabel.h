#pragma once

#include "ui/kit/TextFitting.h"
#include "ui/kit/TextStyle.h"

#include <QLabel>
#include <QTextLayout>

/// A plain text in one style, in the window's colours. Texts with a size of their own never ask for width; texts of the
/// desktop's size ask for all of it, and at least for their longest word if that is not unusually long. A label takes
/// what it is given, wraps or shrinks as its style allows, and cuts the rest with an ellipsis, at the edge that
/// QLabel's alignment names. Its accessible name is always the whole text; a tool tip shows it when it had to be cut.
/// Its line height is the style's, whatever the text holds. A change of the desktop's font is followed.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    TextLabel(const TextStyle& style, const Colours& colours, QWidget* parent = nullptr, const QString& text = {});

    void display(const QString& text);
    void setRole(ColourRole role);

    [[nodiscard]] QString wholeText() const { return accessibleName(); }
    [[nodiscard]] const QFont& shownFont() const { return m_font; }

    /// The text as it is drawn at the present width, lines apart by U+2028.
    [[nodiscard]] QString shownText() const;
    [[nodiscard]] bool isCut() const;

    /// The size of the letters as drawn, relative to the style's.
    [[nodiscard]] qreal shownScale() const;

    [[nodiscard]] int lineHeight() const { return m_lineHeight; }

    /// The width that the text takes if no line is broken for want of room, rounded up.
    [[nodiscard]] int naturalWidth() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    [[nodiscard]] const Colours& colours() const { return m_colours; }

    /// The place in `shownText()` that is nearest to a point of the label.
    [[nodiscard]] int placeAt(QPointF point) const;

    /// What is set off from the rest, by places in `shownText()`.
    [[nodiscard]] virtual QList<QTextLayout::FormatRange> highlights() const { return {}; }

    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Shown {
        int width = -1;
        QString text;
        bool isCut = false;
        qreal scale = 1;
    };

    void useFont();
    void prepare(int width) const;
    void layOut() const;
    [[nodiscard]] int top() const;

    const TextStyle m_style;
    const Colours& m_colours;
    Tint m_tint;
    QFont m_font;
    int m_lineHeight = 0;
    TextFitting::Prepared m_prepared;
    mutable int m_naturalWidth = -1;
    mutable Shown m_shown;
    mutable QTextLayout m_layout;
};
