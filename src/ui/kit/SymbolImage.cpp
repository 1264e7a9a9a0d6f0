#include "ui/kit/SymbolImage.h"

#include "ui/kit/Drawing.h"

#include <QPainter>

#include <utility>

SymbolImage::SymbolImage(QString name, Symbol::Weight weight)
    : m_name{std::move(name)}
    , m_weight{weight} {}

void SymbolImage::draw(QPainter& painter, const QRectF& square, const QColor& colour) const {
    const QRectF target = Drawing::snapped(painter, square);
    const Look look{target.width(), colour, Drawing::scale(painter)};
    if (look != m_look) {
        m_look = look;
        m_pixmap = Symbol::pixmap(m_name, look.size, look.colour, look.scale, m_weight, Symbol::Fit::height);
    }
    const qreal overhang = (m_pixmap.deviceIndependentSize().width() - target.width()) / 2;
    painter.drawPixmap(target.topLeft() - QPointF{overhang, 0}, m_pixmap);
}
