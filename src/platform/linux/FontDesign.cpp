#include "platform/FontDesign.h"

#include <QFontDatabase>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

/// Widespread families with rounded ends, the best match for a desktop's text first.
constexpr std::array roundedFamilies{"Nunito", "Varela Round", "M PLUS Rounded 1c", "Quicksand", "Comfortaa"};

QFont monospaced(const QFont& font) {
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font.pixelSize() > 0) {
        fixed.setPixelSize(font.pixelSize());
    } else {
        fixed.setPointSizeF(font.pointSizeF());
    }
    return fixed;
}

QFont rounded(QFont font) {
    const auto* const installed = std::ranges::find_if(
        roundedFamilies, [](const char* family) { return QFontDatabase::hasFamily(QString::fromLatin1(family)); });
    if (installed != roundedFamilies.end()) {
        font.setFamilies({QString::fromLatin1(*installed)});
    }
    return font;
}

}

QFont inDesign(const QFont& font, FontDesign design) {
    switch (design) {
    case FontDesign::monospaced:
        return monospaced(font);
    case FontDesign::rounded:
        return rounded(font);
    case FontDesign::system:
        break;
    }
    return font;
}
