#include "ui/menubar/PlainButton.h"

#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

namespace Button = PanelMetrics::Button;

PlainButton::PlainButton(const QString& title, const TextStyle& style, QWidget* parent)
    : PanelButton{title, parent}
    , m_font{style.font()} {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void PlainButton::setColour(const QColor& colour) {
    if (colour != m_colour) {
        m_colour = colour;
        update();
    }
}

QSize PlainButton::sizeHint() const {
    const QFontMetricsF metrics{m_font};
    return {static_cast<int>(std::ceil(metrics.horizontalAdvance(title()))) + 2 * Button::focusRingRoom,
            static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()))};
}

void PlainButton::draw(QPainter& painter) {
    if (isDown()) {
        painter.setOpacity(painter.opacity() * Button::plainPressedOpacity);
    }
    painter.setFont(m_font);
    painter.setPen(m_colour);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, title());
    if (showsFocusRing()) {
        Drawing::strokeRounded(painter, rect(), Button::focusRingRoom, m_colour, Button::focusRingWidth / 2);
    }
}

#include "moc_PlainButton.cpp"
