// Symbols and fonts. Only two names of symbols are known; a drawing fills its whole place in black.
#include "Machinery.h"

#include <CoreText/CoreText.h>

using namespace Machinery;

namespace {

struct Bitmap {
    unsigned char* pixels = nullptr;
    NSInteger width = 0;
    NSInteger height = 0;
    NSInteger bytesPerRow = 0;
} bitmap;

NSImage* configured = nil;
bool isDrawingInto = false;

}

const CFStringRef kCTFontURLAttribute = reinterpret_cast<CFStringRef>(&kCTFontURLAttribute);
NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignRounded = @"rounded";
NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignMonospaced = @"monospaced";

@implementation NSFont
GIVES(+(NSFont*)systemFontOfSize : (CGFloat)size, [[self alloc] init])
GIVES(+(CGFloat)systemFontSize, 13)
GIVES(-(NSFontDescriptor*)fontDescriptor, [[NSFontDescriptor alloc] init])
@end

@implementation NSFontDescriptor
- (NSFontDescriptor*)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design {
    record("font", design);
    return world().fontFile.isEmpty() ? nil : self;
}
@end

CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute) {
    if (descriptor == nullptr || attribute != kCTFontURLAttribute) {
        abort();
    }
    return (__bridge CFTypeRef)[[NSURL fileURLWithPath:string(world().fontFile)] retain];
}

const CGFloat NSFontWeightRegular = 0;
const CGFloat NSFontWeightSemibold = 0.3;
NSString* NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(NSFontWeight)weight {
    tell(QStringLiteral("%1 points, weight %2").arg(size).arg(weight));
    return [[self alloc] init];
}
@end

@implementation NSImage
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    tell(text(name) + QStringLiteral(" that means ") + text(description));
    return [name isEqualToString:@"bell"] || [name isEqualToString:@"power"] ? [[self alloc] init] : nil;
}
DOES(-(void)setTemplate : (BOOL)value, record("template", value))
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    configured = [[NSImage alloc] init];
    return configured;
}
GIVES(-(NSSize)size, NSMakeSize(world().symbolSize.width(), world().symbolSize.height()))
- (void)drawInRect:(NSRect)place
          fromRect:(NSRect)from
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    if (operation != NSCompositeSourceOver || fraction != 1 || !NSIsEmptyRect(from) || self != configured ||
        !isDrawingInto) {
        return;
    }
    for (NSInteger y = 0; y < bitmap.height; ++y) {
        for (NSInteger x = 0; x < bitmap.width; ++x) {
            if (NSPointInRect(NSMakePoint(x + 0.5, y + 0.5), place)) {
                bitmap.pixels[y * bitmap.bytesPerRow + x * 4 + 3] = 255;
            }
        }
    }
}
@end

@implementation NSImageRep
@end

@implementation NSBitmapImageRep
- (id)initWithBitmapDataPlanes:(unsigned char**)planes
                    pixelsWide:(NSInteger)width
                    pixelsHigh:(NSInteger)height
                 bitsPerSample:(NSInteger)bitsPerSample
               samplesPerPixel:(NSInteger)samplesPerPixel
                      hasAlpha:(BOOL)alpha
                      isPlanar:(BOOL)isPlanar
                colorSpaceName:(NSString*)colorSpaceName
                   bytesPerRow:(NSInteger)rowBytes
                  bitsPerPixel:(NSInteger)pixelBits {
    if (bitsPerSample != 8 || samplesPerPixel != 4 || !alpha || isPlanar || pixelBits != 32 || rowBytes < 4 * width ||
        ![colorSpaceName isEqualToString:NSDeviceRGBColorSpace]) {
        return nil;
    }
    bitmap = {.pixels = planes[0], .width = width, .height = height, .bytesPerRow = rowBytes};
    return self;
}
@end

@implementation NSGraphicsContext
DOES(+(void)saveGraphicsState, tell("state kept"))
DOES(-(void)flushGraphics, tell("flushed"))
GIVES(+(NSGraphicsContext*)graphicsContextWithBitmapImageRep : (NSBitmapImageRep*)bitmap, [[self alloc] init])
DOES(+(void)setCurrentContext : (NSGraphicsContext*)context, isDrawingInto = context != nil)
+ (void)restoreGraphicsState {
    tell("state restored");
    isDrawingInto = false;
}
@end
