#pragma once

#include <QLabel>
#include <QStringList>

/// A text of a form in one of its styles, in the desktop's font and colours. It wraps, also inside a word that is too
/// long; after `maximumLines` it is cut, and the whole of it is in the tool tip. Its text is plain text, never markup.
class FormText final : public QLabel {
    Q_OBJECT

public:
    /// Captions are in the secondary colour, all others in the colour of text.
    enum class Style { body, headline, monospaced, caption, captionMonospaced };

    static constexpr int maximumLines = 6;

    explicit FormText(const QString& text, Style style = Style::body, QWidget* parent = nullptr);

    /// The font of a style, beside text of the body in `body`.
    [[nodiscard]] static QFont fontOf(Style style, QFont body);

    [[nodiscard]] QFont shownFont() const { return fontOf(m_style, font()); }
    [[nodiscard]] QColor shownColour() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Lines final {
        QStringList texts;
        bool isCut = false;
    };

    [[nodiscard]] Lines linesFor(int width) const;

    Style m_style;
};
