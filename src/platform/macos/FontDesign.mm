#include "platform/FontDesign.h"

#include "platform/macos/NativeString.h"

#include <QFontDatabase>
#include <QHash>

#import <AppKit/AppKit.h>
#include <CoreText/CoreText.h>

namespace {

/// Qt knows the system's font in its plain design only, but reads the file of any other.
QString familyOf(NSFontDescriptorSystemDesign design) {
    @autoreleasepool {
        NSFontDescriptor* plain = [[NSFont systemFontOfSize:[NSFont systemFontSize]] fontDescriptor];
        NSFontDescriptor* designed = [plain fontDescriptorWithDesign:design];
        if (designed == nil) {
            return {};
        }
        NSURL* file = (__bridge_transfer NSURL*)CTFontDescriptorCopyAttribute((__bridge CTFontDescriptorRef)designed,
                                                                              kCTFontURLAttribute);
        const int id = QFontDatabase::addApplicationFont(NativeString::toQt([file path]));
        return QFontDatabase::applicationFontFamilies(id).value(0);
    }
}

QString familyOf(FontDesign design) {
    static QHash<FontDesign, QString> known;
    if (known[design].isEmpty()) {
        known[design] = familyOf(design == FontDesign::rounded ? NSFontDescriptorSystemDesignRounded
                                                               : NSFontDescriptorSystemDesignMonospaced);
    }
    return known[design];
}

QFont fixed(const QFont& font) {
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font.pixelSize() > 0) {
        fixed.setPixelSize(font.pixelSize());
    } else {
        fixed.setPointSizeF(font.pointSizeF());
    }
    return fixed;
}

}

QFont inDesign(const QFont& font, FontDesign design) {
    if (design == FontDesign::system) {
        return font;
    }
    const QString family = familyOf(design);
    if (family.isEmpty()) {
        return design == FontDesign::monospaced ? fixed(font) : font;
    }
    QFont designed{font};
    designed.setFamilies({family});
    return designed;
}
