#include "ui/menubar/ButtonLabel.h"

#include "ui/menubar/PanelMetrics.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Button = PanelMetrics::Button;

ButtonLabel::ButtonLabel(QString title, const QString& symbolName, const TextStyle& style)
    : m_title{std::move(title)}
    , m_symbol{symbolName, style.weight >= QFont::DemiBold ? Symbol::Weight::semibold : Symbol::Weight::regular}
    , m_font{style.font()} {
    const QFontMetricsF metrics{m_font};
    m_titleWidth = static_cast<int>(std::ceil(metrics.horizontalAdvance(m_title)));
    m_titleHeight = static_cast<int>(std::ceil(metrics.ascent() + metrics.descent()));
}

QSize ButtonLabel::size() const {
    return {Button::symbol + Button::symbolSpacing + m_titleWidth, std::max(Button::symbol, m_titleHeight)};
}

void ButtonLabel::draw(QPainter& painter, const QRectF& room, Placement placement, const QColor& colour) const {
    const qreal spare = std::max(0.0, room.width() - size().width());
    const qreal left = room.left() + (placement == Placement::centred ? std::floor(spare / 2) : 0);
    const qreal symbolTop = room.top() + std::floor((room.height() - Button::symbol) / 2);
    m_symbol.draw(painter, {left, symbolTop, Button::symbol, Button::symbol}, colour);
    const qreal textLeft = left + Button::symbol + Button::symbolSpacing;
    painter.setFont(m_font);
    painter.setPen(colour);
    painter.drawText(QRectF{textLeft, room.top(), room.right() - textLeft, room.height()},
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, m_title);
}
