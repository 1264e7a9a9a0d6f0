#include "Cases.h"
#include "platform/Symbol.h"
#include "ui/kit/Button.h"

#include <QBitmap>
#include <QRegion>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

/// The smallest rectangle around all that is painted.
QRect painted(const QPixmap& picture) {
    const QImage image = picture.toImage().convertToFormat(QImage::Format_ARGB32);
    return QRegion{QBitmap::fromImage(image.createAlphaMask())}.boundingRect();
}

/// NAME SIZE SCALE FIT, and the symbol's own width and height: the picture's size, and what is painted.
void draw(const QString& words) {
    const QStringList parts = words.split(u' ');
    world().symbolSize = {parts[4].toDouble(), parts[5].toDouble()};
    const auto fit = parts[3] == u"square"_s ? Symbol::Fit::square : Symbol::Fit::height;
    const QPixmap picture =
        Symbol::pixmap(parts[0], parts[1].toDouble(), Qt::black, parts[2].toDouble(), Symbol::Weight::regular, fit);
    (void)told();
    tell(u"%1x%2 at %3"_s.arg(picture.width()).arg(picture.height()).arg(picture.devicePixelRatio()));
    tell(painted(picture));
}

struct Black final : Colours {
    QColor of(ColourRole /*role*/) const override { return Qt::black; }
};

/// WIDTH HEIGHT of a symbol: how it is asked for, and what a button without a title paints.
void button(const QString& words) {
    world().symbolSize = {numbers(words)[0], numbers(words)[1]};
    const Black black;
    Button button{{}, u"bell"_s, {.text = {.weight = QFont::DemiBold}, .horizontalPadding = 30}, black};
    QPixmap picture{button.sizeHint()};
    picture.fill(Qt::transparent);
    button.resize(picture.size());
    button.render(&picture, {}, {}, {});
    tell(painted(picture));
}

void colour(const QString& name) {
    const QImage picture = Symbol::pixmap(u"bell"_s, 16, QColor{name}, 1).toImage();
    (void)told();
    tell(picture.pixelColor(8, 8).name(QColor::HexArgb));
}

}

const Area& symbolArea() {
    static const Area area{
        "symbol",
        {
            {u"draw"_s, draw},
            {u"button"_s, button},
            {u"colour"_s, colour},
            {u"regular"_s, [](auto& name) { (void)Symbol::pixmap(name, 16, Qt::black, 2); }},
            {u"semibold"_s, [](auto& name) { (void)Symbol::pixmap(name, 20, Qt::black, 2, Symbol::Weight::semibold); }},
        },
        {
            {"it is asked for in its size and weight, and the graphics are left as they were", "regular bell",
             "12 points, weight 0; bell that means nothing; state kept; flushed; state restored"},
            {"semibold", "semibold none", "15 points, weight 0.3; none that means nothing"},
            {"not a whole number of pixels", "draw bell 13 1.25 square 13 13", "16x16 at 1.25; QRect(0,0 16x16)"},
            {"of no size", "draw none 0 1 square 16 16", "1x1 at 1; QRect(0,0 0x0)"},
            {"without a symbol it is transparent", "draw none 16 2 square 16 16", "32x32 at 2; QRect(0,0 0x0)"},
            {"smaller at 2x", "draw bell 20 2 square 10 12", "40x40 at 2; QRect(10,8 20x24)"},
            {"wider", "draw bell 20 1 square 40 20", "20x20 at 1; QRect(0,5 20x10)"},
            {"higher, at 2x", "draw bell 20 2 square 10 40", "40x40 at 2; QRect(15,0 10x40)"},
            {"wider, as large as its neighbours", "draw bell 20 1 height 24 18", "24x20 at 1; QRect(0,1 24x18)"},
            {"wider by an odd number of pixels", "draw bell 20 2 height 23 18", "46x40 at 2; QRect(0,2 46x36)"},
            {"wider and higher", "draw bell 20 1 height 60 40", "30x20 at 1; QRect(0,0 30x20)"},
            {"a button draws a wide one beyond its square", "button 24 18",
             "12 points, weight 0.3; bell that means nothing; state kept; flushed; state restored; QRect(27,0 22x16)"},
            {"it has exactly the colour", "colour #129af3", "#ff129af3"},
            {"it is as faint as the colour", "colour #80000000", "#80000000"},
        }};
    return area;
}
