#pragma once

#include <QColor>
#include <QPainterPath>
#include <QRectF>

class QPainter;

/// Shapes that stay crisp at every scale of the screen: their edges are laid on the grid of its pixels. Lengths are
/// points.
namespace Drawing {

/// Whether the area is nowhere nearer to the rectangle's edges than `rim`: a repaint of it needs no edges and corners.
[[nodiscard]] inline bool isInside(const QRect& area, const QRect& rect, int rim) {
    return rect.adjusted(rim, rim, -rim, -rim).contains(area);
}

/// How many of the device's pixels a point is.
[[nodiscard]] qreal scale(const QPainter& painter);

/// The rectangle with every edge moved to the nearest edge of a pixel.
[[nodiscard]] QRectF snapped(const QPainter& painter, const QRectF& rect);

/// A line's width as a whole number of pixels, at least one.
[[nodiscard]] qreal lineWidth(const QPainter& painter, qreal width);

/// A rectangle whose sides run into its corners without a visible seam, as round as a circle of `radius`.
[[nodiscard]] QPainterPath roundedRect(const QRectF& rect, qreal radius);

void fillRounded(QPainter& painter, const QRectF& rect, qreal radius, const QColor& colour);

/// Draws the outline inside the rectangle's edge.
void strokeRounded(QPainter& painter, const QRectF& rect, qreal radius, const QColor& colour, qreal width = 1);

/// A circle of about `diameter` in the middle of the square, rounded so that two in one square share their centre.
void fillCircle(QPainter& painter, const QRectF& square, qreal diameter, const QColor& colour);

}
