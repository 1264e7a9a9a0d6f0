#pragma once

#include <QColor>
#include <QImage>
#include <QWidget>

/// What a widget draws, pixel by pixel.
namespace Pixels {

/// The widget over `ground`, at `scale` pixels a point.
[[nodiscard]] inline QImage drawn(QWidget& widget, QRgb ground, int scale = 1) {
    QImage image{widget.size() * scale, QImage::Format_RGB32};
    image.setDevicePixelRatio(scale);
    image.fill(ground);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

[[nodiscard]] inline QColor blended(QRgb over, QRgb under, qreal opacity) {
    const auto mix = [opacity](int a, int b) { return qRound(a * opacity + b * (1 - opacity)); };
    return {mix(qRed(over), qRed(under)), mix(qGreen(over), qGreen(under)), mix(qBlue(over), qBlue(under))};
}

[[nodiscard]] inline bool isNear(const QColor& actual, const QColor& expected) {
    return qAbs(actual.red() - expected.red()) <= 1 && qAbs(actual.green() - expected.green()) <= 1 &&
           qAbs(actual.blue() - expected.blue()) <= 1;
}

}
