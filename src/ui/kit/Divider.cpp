#include "ui/kit/Divider.h"

#include "ui/kit/Drawing.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

Divider::Divider(const Colours& colours, QWidget* parent)
    : Decoration{parent}
    , m_colours{colours} {
    setFixedHeight(thickness);
}

void Divider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    const qreal pixels = Drawing::scale(painter);
    QRectF rule = Drawing::snapped(painter, rect());
    // One that is rounded up would reach below this widget, where it is cut off at some heights and not at others.
    rule.setHeight(std::max(1.0, std::floor(thickness * pixels)) / pixels);
    painter.fillRect(rule, m_colours.of(ColourRole::border));
}

#include "moc_Divider.cpp"
