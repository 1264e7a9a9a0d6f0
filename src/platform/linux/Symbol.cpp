#include "platform/Symbol.h"

#include <QDataStream>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <cmath>

static constexpr qreal grid = 16;

/// Pens, whether they fill, and paths on a grid of 16: made from resources/symbols by devtools/symbol-paths. Nothing
/// for a name without a drawing.
QByteArray symbolDrawing(QStringView name);

// All are drawn in a square, and both weights are the same drawing: its strokes are two whole pixels wide, and half a
// pixel more is a soft edge.
QPixmap Symbol::pixmap(const QString& name, qreal size, const QColor& colour, qreal scale, Weight /*weight*/,
                       Fit /*fit*/) {
    const int side = std::max(1, static_cast<int>(std::lround(size * scale)));
    QImage picture{side, side, QImage::Format_ARGB32_Premultiplied};
    picture.fill(Qt::transparent);
    if (QDataStream drawing{symbolDrawing(name)}; !drawing.atEnd()) {
        drawing.setVersion(QDataStream::Qt_6_4);
        QPainter painter{&picture};
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(side / grid, side / grid);
        while (!drawing.atEnd()) {
            QPen pen;
            bool isFilled = false;
            QPainterPath path;
            drawing >> pen >> isFilled >> path;
            painter.setPen(pen);
            painter.setBrush(isFilled ? Qt::SolidPattern : Qt::NoBrush);
            painter.drawPath(path);
        }
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(QRectF{0, 0, grid, grid}, colour);
    }
    picture.setDevicePixelRatio(scale);
    // An image keeps what was needed to paint on it, some kilobytes, for as long as it lives; its copy does not.
    return QPixmap::fromImage(picture.copy());
}
