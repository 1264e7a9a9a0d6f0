#include "ui/menubar/PanelFrame.h"

#include "ui/kit/Drawing.h"
#include "ui/menubar/PanelMetrics.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace ScrollMark = PanelMetrics::ScrollMark;

PanelFrame::PanelFrame(const Colours& colours, QWidget* parent)
    : QWidget{parent}
    , m_colours{colours} {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
}

void PanelFrame::setCorners(Corners corners) {
    if (corners != m_corners) {
        m_corners = corners;
        update();
    }
}

void PanelFrame::setView(qreal start, qreal length) {
    if (start != m_viewStart || length != m_viewLength) {
        m_viewStart = start;
        m_viewLength = length;
        update();
    }
}

void PanelFrame::paintEvent(QPaintEvent* event) {
    if (Drawing::isInside(event->rect(), rect(), PanelMetrics::cornerRadius)) {
        return;
    }
    QPainter painter{this};
    cutCorners(painter);
    const int radius = m_corners == Corners::round ? PanelMetrics::cornerRadius : 0;
    Drawing::strokeRounded(painter, rect(), radius, m_colours.of(ColourRole::border));
    drawScrollMark(painter);
}

void PanelFrame::cutCorners(QPainter& painter) const {
    if (m_corners == Corners::square) {
        return;
    }
    const QRectF bounds = Drawing::snapped(painter, rect());
    QPainterPath outside = Drawing::roundedRect(bounds, PanelMetrics::cornerRadius);
    outside.addRect(bounds.adjusted(-1, -1, 1, 1));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
    painter.restore();
}

void PanelFrame::drawScrollMark(QPainter& painter) const {
    if (m_viewLength >= 1) {
        return;
    }
    const qreal room = height() - 2 * PanelMetrics::cornerRadius;
    const qreal length = std::max<qreal>(ScrollMark::minLength, m_viewLength * room);
    const qreal top = PanelMetrics::cornerRadius + m_viewStart / (1 - m_viewLength) * (room - length);
    const qreal left = width() - ScrollMark::margin - ScrollMark::width;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_colours.of({ColourRole::textMuted, ScrollMark::opacity}));
    painter.drawRoundedRect(QRectF{left, top, ScrollMark::width, length}, ScrollMark::width / 2.0,
                            ScrollMark::width / 2.0);
}

#include "moc_PanelFrame.cpp"
