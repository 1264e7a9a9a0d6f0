#include "platform/FontDesign.h"

#include "platform/macos/NativeString.h"

#include <QFontDatabase>
#include <QHash>

#import <AppKit/AppKit.h>
#include <CoreText/CoreText.h>

/// Qt knows the system's font in its plain design only, but reads the file of any other.
static QString familyOf(NSFontDescriptorSystemDesign design) {
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

QString familyOf(FontDesign design) {
    static QHash<FontDesign, QString> known;
    if (design != FontDesign::system && known[design].isEmpty()) {
        known[design] = familyOf(design == FontDesign::rounded ? NSFontDescriptorSystemDesignRounded
                                                               : NSFontDescriptorSystemDesignMonospaced);
    }
    return known[design];
}
