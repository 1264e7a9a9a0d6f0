#include "ui/kit/TextStyle.h"

#include <algorithm>

QFont TextStyle::font(const QFont& desktop) const {
    QFont font = inDesign(desktop, design);
    if (size > 0) {
        font.setPixelSize(size);
    } else if (font.pixelSize() > 0) {
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * scale)));
    } else {
        font.setPointSizeF(font.pointSizeF() * scale);
    }
    font.setWeight(weight);
    if (tracking != 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    }
    return font;
}
