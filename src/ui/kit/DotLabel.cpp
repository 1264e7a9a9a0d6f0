#include "ui/kit/DotLabel.h"

#include "ui/kit/Drawing.h"

#include <QPainter>

#include <algorithm>

DotLabel::DotLabel(int diameter, QWidget* parent, int haloDiameter, float haloOpacity)
    : QLabel{parent}
    , m_diameter{diameter}
    , m_haloDiameter{haloDiameter}
    , m_haloOpacity{haloOpacity} {
    const int side = std::max(diameter, haloDiameter);
    setFixedSize(side, side);
}

void DotLabel::display(const QColor& colour, const QString& state) {
    if (state != accessibleName()) {
        setAccessibleName(state);
    }
    if (colour != m_colour) {
        m_colour = colour;
        update();
    }
}

void DotLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter{this};
    if (m_haloDiameter > 0) {
        QColor halo = m_colour;
        halo.setAlphaF(m_haloOpacity);
        Drawing::fillCircle(painter, rect(), m_haloDiameter, halo);
    }
    Drawing::fillCircle(painter, rect(), m_diameter, m_colour);
}

#include "moc_DotLabel.cpp"
