#include "ui/kit/Divider.h"

#include "ui/kit/Drawing.h"

#include <QPainter>

Divider::Divider(QWidget* parent)
    : QWidget{parent} {
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
    painter.fillRect(Drawing::snapped(painter, rect()), m_colour);
}

#include "moc_Divider.cpp"
