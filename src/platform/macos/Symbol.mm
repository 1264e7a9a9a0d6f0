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

/// In the middle, at its own size or as much smaller as it must be.
NSRect placeFor(NSImage* image, int side, qreal scale) {
    const QSizeF natural{image.size.width, image.size.height};
    const qreal factor = std::min({scale, side / natural.width(), side / natural.height()});
    const QSizeF size = natural * factor;
    return NSMakeRect((side - size.width()) / 2, (side - size.height()) / 2, size.width(), size.height());
}

void draw(NSImage* image, QImage& picture, qreal scale) {
    NSGraphicsContext* context = [NSGraphicsContext graphicsContextWithBitmapImageRep:over(picture)];
    [NSGraphicsContext saveGraphicsState];
    [NSGraphicsContext setCurrentContext:context];
    [image drawInRect:placeFor(image, picture.width(), scale)
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

QPixmap Symbol::pixmap(const QString& name, qreal size, const QColor& colour, qreal scale, Weight weight) {
    const int side = std::max(1, static_cast<int>(std::lround(size * scale)));
    QImage picture{side, side, QImage::Format_RGBA8888_Premultiplied};
    picture.fill(Qt::transparent);
    @autoreleasepool {
        if (NSImage* image = symbol(name, size, weight); image != nil) {
            draw(image, picture, scale);
            tint(picture, colour);
        }
    }
    QPixmap result = QPixmap::fromImage(picture);
    result.setDevicePixelRatio(scale);
    return result;
}
