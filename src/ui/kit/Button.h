#pragma once

#include "ui/kit/ButtonStyle.h"

#include <QPixmap>
#include <QPushButton>

#include <tuple>

/// A push button that is drawn in a `ButtonStyle` and the window's colours. Its title is its accessible name; Space,
/// Return and Enter press it while they are held and click when they are let go; a ring shows that it has the
/// keyboard. One with an outline or a fill shares the width that its row has, a bare title takes its own. A change of
/// the desktop's font is followed.
class Button : public QPushButton {
    Q_OBJECT

public:
    static constexpr int symbolSize = 16;      ///< points
    static constexpr qreal focusRingWidth = 2; ///< points
    static constexpr float disabledOpacity = 0.55F;

    /// Without a symbol where its name is empty.
    Button(const QString& title, const QString& symbolName, const ButtonStyle& style, const Colours& colours,
           QWidget* parent = nullptr);

    /// Enables or disables the button. The keyboard's focus is not handed on when it goes away with the button, and
    /// comes back with it.
    void setAvailable(bool isAvailable);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    /// How it looks at present: other styles of the same measures may take turns.
    [[nodiscard]] virtual const ButtonStyle& look() const { return m_style; }

    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void useFont();
    void drawLabel(QPainter& painter);
    void drawSymbol(QPainter& painter, QPointF place, const QColor& colour);
    void drawFocusRing(QPainter& painter) const;
    [[nodiscard]] QSize labelSize() const;

    const ButtonStyle m_style;
    const Colours& m_colours;
    const QString m_symbolName;
    std::tuple<qreal, qreal, QRgb> m_symbolLook; ///< size, scale and colour of the symbol that was drawn last
    QPixmap m_symbol;
    QFont m_font;
    QSize m_titleSize;
    bool m_hasKeyboardFocus = false;
    bool m_lostFocusWithUse = false;
};
