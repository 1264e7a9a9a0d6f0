#include "platform/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

// The linker drops the pictures of a static library unless they are named; the macro must stand outside a namespace.
static void registerPictures() {
    Q_INIT_RESOURCE(symbols);
}

// All are drawn in a square, and both weights are the same drawing: its strokes are two whole pixels wide, and half a
// pixel more is a soft edge.
QPixmap Symbol::pixmap(const QString& name, qreal size, const QColor& colour, qreal scale, Weight /*weight*/,
                       Fit /*fit*/) {
    [[maybe_unused]] static const bool registered = (registerPictures(), true);
    const int side = std::max(1, static_cast<int>(std::lround(size * scale)));
    QImage picture{side, side, QImage::Format_ARGB32_Premultiplied};
    picture.fill(Qt::transparent);
    const QString file = u":/symbols/"_s + name + u".svg"_s;
    if (QSvgRenderer renderer; !name.contains(u'/') && QFile::exists(file) && renderer.load(file)) {
        QPainter painter{&picture};
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter, picture.rect());
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(picture.rect(), colour);
    }
    picture.setDevicePixelRatio(scale);
    // An image keeps what was needed to paint on it, some kilobytes, for as long as it lives; its copy does not.
    return QPixmap::fromImage(picture.copy());
}
