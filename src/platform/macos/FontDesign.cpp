#include "platform/FontDesign.h"

#include <QFontDatabase>

QFont inDesign(const QFont& font, FontDesign design) {
    if (design != FontDesign::monospaced) {
        return font;
    }
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (font.pixelSize() > 0) {
        fixed.setPixelSize(font.pixelSize());
    } else {
        fixed.setPointSizeF(font.pointSizeF());
    }
    return fixed;
}
