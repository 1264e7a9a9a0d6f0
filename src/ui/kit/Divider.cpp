#include "ui/kit/Divider.h"

#include "ui/kit/Drawing.h"

#include <QPainter>

Divider::Divider(QWidget* parent)
    : Decoration{parent} {
    setFixedHeight(thickness);
}

void Divider::setColour(const QColor& colour) {
    if (colour != m_colour) {
        m_colour = colour;
        update();
    }
}

void Divider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    QRectF rule = Drawing::snapped(painter, rect());
    rule.setHeight(Drawing::lineWidth(painter, thickness));
    painter.fillRect(rule, m_colour);
}

#include "moc_Divider.cpp"
