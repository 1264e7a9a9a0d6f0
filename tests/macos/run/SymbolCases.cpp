#include "Cases.h"
#include "platform/Symbol.h"

#include <QBitmap>
#include <QRegion>

using namespace Qt::StringLiterals;
using namespace Doubles;
using enum Symbol::Fit;

namespace {

/// The size of the picture, and the smallest rectangle around all that is painted.
auto drawn(QSizeF natural, qreal size, qreal scale, Symbol::Fit fit, const QString& name = u"bell"_s) {
    return [=] {
        world().symbolSize = natural;
        const QPixmap picture = Symbol::pixmap(name, size, Qt::black, scale, Symbol::Weight::regular, fit);
        (void)told();
        const QRect ink =
            QRegion{QBitmap::fromImage(picture.toImage().convertToFormat(QImage::Format_ARGB32).createAlphaMask())}
                .boundingRect();
        tell(u"%1x%2 at %3"_s.arg(picture.width()).arg(picture.height()).arg(picture.devicePixelRatio()));
        tell(ink);
    };
}

auto coloured(const QColor& colour) {
    return [=] {
        const QImage picture = Symbol::pixmap(u"bell"_s, 16, colour, 1).toImage();
        (void)told();
        tell(picture.pixelColor(8, 8).name(QColor::HexArgb));
    };
}

}

const QList<Case> symbolCases{
    {"it is asked for in its size and weight, and the graphics are left as they were",
     [] { (void)Symbol::pixmap(u"bell"_s, 16, Qt::black, 2); },
     "12 points, weight 0; bell that means nothing; state kept; flushed; state restored"},
    {"semibold", [] { (void)Symbol::pixmap(u"none"_s, 20, Qt::black, 2, Symbol::Weight::semibold); },
     "15 points, weight 0.3; none that means nothing"},
    {"1x", drawn({16, 16}, 16, 1, square), "16x16 at 1; QRect(0,0 16x16)"},
    {"not a whole number of pixels", drawn({13, 13}, 13, 1.25, square), "16x16 at 1.25; QRect(0,0 16x16)"},
    {"of no size", drawn({16, 16}, 0, 1, square, u"none"_s), "1x1 at 1; QRect(0,0 0x0)"},
    {"without a symbol it is transparent", drawn({16, 16}, 16, 2, square, u"none"_s), "32x32 at 2; QRect(0,0 0x0)"},
    {"smaller", drawn({10, 12}, 20, 1, square), "20x20 at 1; QRect(5,4 10x12)"},
    {"smaller at 2x", drawn({10, 12}, 20, 2, square), "40x40 at 2; QRect(10,8 20x24)"},
    {"wider", drawn({40, 20}, 20, 1, square), "20x20 at 1; QRect(0,5 20x10)"},
    {"higher, at 2x", drawn({10, 40}, 20, 2, square), "40x40 at 2; QRect(15,0 10x40)"},
    {"smaller, as large as its neighbours", drawn({10, 12}, 20, 1, height), "20x20 at 1; QRect(5,4 10x12)"},
    {"wider, as large as its neighbours", drawn({24, 18}, 20, 1, height), "24x20 at 1; QRect(0,1 24x18)"},
    {"wider by an odd number of pixels", drawn({23, 18}, 20, 2, height), "46x40 at 2; QRect(0,2 46x36)"},
    {"wider and higher", drawn({60, 40}, 20, 1, height), "30x20 at 1; QRect(0,0 30x20)"},
    {"it has exactly the colour", coloured({0x12, 0x9a, 0xf3}), "#ff129af3"},
    {"it is as faint as the colour", coloured({0, 0, 0, 0x80}), "#80000000"},
};
