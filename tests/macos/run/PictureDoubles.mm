// Symbols and fonts. Only two names of symbols are known; a drawing fills its whole place in black.
#include "Machinery.h"

#include <unordered_map>

#include <CoreText/CoreText.h>

using namespace Machinery;

namespace {

struct Bitmap {
    unsigned char* pixels = nullptr;
    NSInteger width = 0;
    NSInteger height = 0;
    NSInteger bytesPerRow = 0;
};

struct Pictures {
    std::unordered_map<NSImage*, QString> images;
    std::unordered_map<NSImage*, QString> descriptions;
    std::unordered_map<NSImage*, bool> templates;
    std::unordered_map<NSBitmapImageRep*, Bitmap> bitmaps;
    std::unordered_map<NSGraphicsContext*, NSBitmapImageRep*> contexts;
    NSBitmapImageRep* drawingInto = nil;
    std::vector<NSBitmapImageRep*> graphicsStates;
};

Pictures& machinery() {
    static Pictures one;
    return one;
}

}

void Machinery::forgetPictures() {
    machinery() = {};
}

void Machinery::describe(NSImage* image, Doubles::Button& button) {
    button.imageName = machinery().images[image];
    button.imageDescription = machinery().descriptions[image];
    button.imageIsTemplate = machinery().templates[image];
}

const CFStringRef kCTFontURLAttribute = reinterpret_cast<CFStringRef>(&kCTFontURLAttribute);
NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignRounded = @"rounded";
NSFontDescriptorSystemDesign const NSFontDescriptorSystemDesignMonospaced = @"monospaced";

@implementation NSFont
+ (NSFont*)systemFontOfSize:(CGFloat)size {
    return [[self alloc] init];
}
+ (CGFloat)systemFontSize {
    return 13;
}
- (NSFontDescriptor*)fontDescriptor {
    return [[NSFontDescriptor alloc] init];
}
@end

@implementation NSFontDescriptor
- (NSFontDescriptor*)fontDescriptorWithDesign:(NSFontDescriptorSystemDesign)design {
    now().fontDesigns.append(text(design));
    return now().fontFile.isEmpty() ? nil : self;
}
@end

CFTypeRef CTFontDescriptorCopyAttribute(CTFontDescriptorRef descriptor, CFStringRef attribute) {
    if (descriptor == nullptr) {
        abort();
    }
    NSURL* file = [NSURL fileURLWithPath:string(now().fontFile)];
    return attribute == kCTFontURLAttribute ? (__bridge CFTypeRef)[file retain] : nullptr;
}

const CGFloat NSFontWeightRegular = 0;
const CGFloat NSFontWeightSemibold = 0.3;
NSString* NSDeviceRGBColorSpace = @"NSDeviceRGBColorSpace";

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)size weight:(NSFontWeight)weight {
    now().symbolPointSize = size;
    now().symbolWeight = weight;
    return [[self alloc] init];
}
- (id)copyWithZone:(NSZone*)zone {
    return [self retain];
}
@end

@implementation NSImage
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    if (![name isEqualToString:@"bell"] && ![name isEqualToString:@"power"]) {
        return nil;
    }
    ++now().imagesMade;
    NSImage* image = [[self alloc] init];
    machinery().images[image] = text(name);
    machinery().descriptions[image] = text(description);
    return image;
}
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    NSImage* image = [[NSImage alloc] init];
    machinery().images[image] = machinery().images[self] + QStringLiteral(" configured");
    return image;
}
- (void)setTemplate:(BOOL)flag {
    machinery().templates[self] = flag;
}
- (NSSize)size {
    return NSMakeSize(now().symbolSize.width(), now().symbolSize.height());
}
- (void)drawInRect:(NSRect)place
          fromRect:(NSRect)from
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)fraction {
    NSBitmapImageRep* into = machinery().drawingInto;
    if (into == nil || operation != NSCompositeSourceOver || fraction != 1 || !NSIsEmptyRect(from) ||
        !machinery().images[self].endsWith(QStringLiteral(" configured"))) {
        return;
    }
    const Bitmap& bitmap = machinery().bitmaps[into];
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
    machinery().bitmaps[self] = {.pixels = planes[0], .width = width, .height = height, .bytesPerRow = rowBytes};
    return self;
}
@end

@implementation NSGraphicsContext
+ (NSGraphicsContext*)graphicsContextWithBitmapImageRep:(NSBitmapImageRep*)bitmap {
    NSGraphicsContext* context = [[self alloc] init];
    machinery().contexts[context] = bitmap;
    return context;
}
+ (void)saveGraphicsState {
    ++now().openGraphicsStates;
    machinery().graphicsStates.push_back(machinery().drawingInto);
}
+ (void)restoreGraphicsState {
    --now().openGraphicsStates;
    machinery().drawingInto = machinery().graphicsStates.back();
    machinery().graphicsStates.pop_back();
}
+ (void)setCurrentContext:(NSGraphicsContext*)context {
    machinery().drawingInto = machinery().contexts[context];
}
- (void)flushGraphics {
    ++now().flushes;
}
@end
