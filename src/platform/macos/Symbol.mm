#include "platform/Symbol.h"

#include "platform/macos/NativeString.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

#import <AppKit/AppKit.h>

namespace {

// A symbol is drawn for a text of a size, and its picture is up to a third larger than that.
constexpr qreal pointSizeOfSide = 0.75;

NSImage* symbol(const QString& name, qreal size, Symbol::Weight weight) {
    NSFontWeight stroke = weight == Symbol::Weight::semibold ? NSFontWeightSemibold : NSFontWeightRegular;
    NSImageSymbolConfiguration* look = [NSImageSymbolConfiguration configurationWithPointSize:size * pointSizeOfSide
                                                                                       weight:stroke];
    NSImage* plain = [NSImage imageWithSystemSymbolName:NativeString::from(name) accessibilityDescription:nil];
    return [plain imageWithSymbolConfiguration:look];
}

/// The system's own kind of picture over the pixels of ours.
NSBitmapImageRep* over(QImage& picture) {
    std::array<unsigned char*, 1> pixels{picture.bits()};
    return [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:pixels.data()
                                                   pixelsWide:picture.width()
                                                   pixelsHigh:picture.height()
                                                bitsPerSample:8
                                              samplesPerPixel:4
                                                     hasAlpha:YES
                                                     isPlanar:NO
                                               colorSpaceName:NSDeviceRGBColorSpace
                                                  bytesPerRow:picture.bytesPerLine()
                                                 bitsPerPixel:32];
}

/// At its own size in pixels, or as much smaller as it must be.
QSizeF sizeOf(NSImage* image, int side, qreal scale, Symbol::Fit fit) {
    const QSizeF natural{image.size.width, image.size.height};
    const qreal widest = fit == Symbol::Fit::square ? side / natural.width() : scale;
    return natural * std::min({scale, widest, side / natural.height()});
}

/// As wide as the symbol, by whole pixels on both sides.
QSize pictureSize(const QSizeF& symbol, int side) {
    const int overhang = std::max(0, static_cast<int>(std::ceil((symbol.width() - side) / 2)));
    return {side + 2 * overhang, side};
}

void draw(NSImage* image, const QSizeF& size, QImage& picture) {
    NSGraphicsContext* context = [NSGraphicsContext graphicsContextWithBitmapImageRep:over(picture)];
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:context];
    [image drawInRect:NSMakeRect((picture.width() - size.width()) / 2, (picture.height() - size.height()) / 2,
                                 size.width(), size.height())
             fromRect:NSZeroRect
            operation:NSCompositingOperationSourceOver
             fraction:1];
    [context flushGraphics];
    [NSGraphicsContext restoreGraphicsState];
}

void tint(QImage& picture, const QColor& colour) {
    QPainter painter{&picture};
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), colour);
}

}

QPixmap Symbol::pixmap(const QString& name, qreal size, const QColor& colour, qreal scale, Weight weight, Fit fit) {
    const int side = std::max(1, static_cast<int>(std::lround(size * scale)));
    QImage picture;
    @autoreleasepool {
        NSImage* image = symbol(name, size, weight);
        const QSizeF drawn = image == nil ? QSizeF{} : sizeOf(image, side, scale, fit);
        picture = QImage{pictureSize(drawn, side), QImage::Format_RGBA8888_Premultiplied};
        picture.fill(Qt::transparent);
        if (image != nil) {
            draw(image, drawn, picture);
            tint(picture, colour);
        }
    }
    QPixmap result = QPixmap::fromImage(picture);
    result.setDevicePixelRatio(scale);
    return result;
}
