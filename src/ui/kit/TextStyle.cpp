#include "ui/kit/TextStyle.h"

#include <QFontDatabase>

QFont TextStyle::font() const {
    QFont font =
        QFontDatabase::systemFont(design == Design::monospaced ? QFontDatabase::FixedFont : QFontDatabase::GeneralFont);
    font.setPixelSize(size);
    font.setWeight(weight);
    if (tracking != 0) {
        font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    }
    return font;
}
