#include "ui/kit/Drawing.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// A corner is one cubic curve that starts farther from the corner than a circle's would, and passes through the same
// point at 45 degrees: 3 * controls + start = 8 * (1 - 1/sqrt 2) radii.
constexpr qreal cornerStart = 1.25;
constexpr qreal cornerDepth = 8 * 0.29289321881345254;

}

qreal Drawing::scale(const QPainter& painter) {
    return std::hypot(painter.deviceTransform().m11(), painter.deviceTransform().m12());
}

QRectF Drawing::snapped(const QPainter& painter, const QRectF& rect) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(rect);
    const QPointF topLeft{std::round(device.left()), std::round(device.top())};
    const QPointF bottomRight{std::round(device.right()), std::round(device.bottom())};
    return toDevice.inverted().mapRect(QRectF{topLeft, bottomRight});
}

qreal Drawing::lineWidth(const QPainter& painter, qreal width) {
    const qreal pixels = scale(painter);
    return std::max(1.0, std::round(width * pixels)) / pixels;
}

QPainterPath Drawing::roundedRect(const QRectF& rect, qreal radius) {
    QPainterPath path;
    if (radius <= 0) {
        path.addRect(rect);
        return path;
    }
    const qreal start = std::min({cornerStart * radius, rect.width() / 2, rect.height() / 2});
    const qreal control = std::max(0.0, (cornerDepth * radius - start) / 3);
    const auto corner = [&path, start, control](QPointF at, QPointF from, QPointF to) {
        path.lineTo(at + from * start);
        path.cubicTo(at + from * control, at + to * control, at + to * start);
    };
    const QPointF left{-1, 0};
    const QPointF right{1, 0};
    const QPointF up{0, -1};
    const QPointF down{0, 1};
    path.moveTo(rect.topLeft() + right * start);
    corner(rect.topRight(), left, down);
    corner(rect.bottomRight(), up, left);
    corner(rect.bottomLeft(), right, up);
    corner(rect.topLeft(), down, right);
    path.closeSubpath();
    return path;
}

void Drawing::fillRounded(QPainter& painter, const QRectF& rect, qreal radius, const QColor& colour) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(roundedRect(snapped(painter, rect), radius), colour);
}

void Drawing::strokeRounded(QPainter& painter, const QRectF& rect, qreal radius, const QColor& colour, qreal width) {
    const qreal line = lineWidth(painter, width);
    const qreal inset = line / 2;
    const QRectF middle = snapped(painter, rect).adjusted(inset, inset, -inset, -inset);
    painter.setRenderHint(QPainter::Antialiasing);
    if (radius <= 0) {
        painter.fillPath(roundedRect(snapped(painter, rect), 0) -
                             roundedRect(middle.adjusted(inset, inset, -inset, -inset), 0),
                         colour);
        return;
    }
    painter.strokePath(roundedRect(middle, std::max(0.0, radius - inset)), QPen{colour, line});
}

void Drawing::fillCircle(QPainter& painter, const QRectF& square, qreal diameter, const QColor& colour) {
    const QTransform toDevice = painter.deviceTransform();
    const QRectF device = toDevice.mapRect(square);
    const int room = static_cast<int>(device.width());
    int across = static_cast<int>(diameter * scale(painter));
    across += (room - across) % 2;
    const int inset = (room - across) / 2;
    const QPointF corner{std::round(device.left()), std::round(device.top())};
    const QRectF circle{corner + QPointF{1, 1} * inset, QSizeF(across, across)};
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(toDevice.inverted().mapRect(circle));
}
