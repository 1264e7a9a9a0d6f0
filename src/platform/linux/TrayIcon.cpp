#include "platform/linux/TrayIcon.h"

#include "platform/Symbol.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array sizes{16, 22, 24, 32, 48, 64};

struct Tone {
    QStringView symbolName;
    QRgb colour;
};

constexpr std::array tones{
    Tone{u"checkmark.circle.fill", 0xff1f9d4d},
    Tone{u"exclamationmark.triangle.fill", 0xffc27a00},
    Tone{u"xmark.octagon.fill", 0xffe5484d},
};
constexpr QRgb otherTone = 0xff8a8f98;

}

QColor TrayIcon::colour(const QString& symbolName) {
    for (const Tone& tone : tones) {
        if (tone.symbolName == symbolName) {
            return QColor::fromRgb(tone.colour);
        }
    }
    return QColor::fromRgb(otherTone);
}

QIcon TrayIcon::icon(const QString& symbolName) {
    QIcon icon;
    for (const int size : sizes) {
        icon.addPixmap(Symbol::pixmap(symbolName, size, colour(symbolName), 1));
    }
    return icon;
}
