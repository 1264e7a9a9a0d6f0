#include "platform/linux/TrayIcon.h"

#include "platform/DrawnIcon.h"
#include "platform/Symbol.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr qreal grid = 16;
/// A part of the mark that is cut out of every filled symbol, in units of the grid; the rim alone would not fill it.
constexpr QRectF mark{6, 5, 3, 8};

struct Tones {
    QStringView symbolName;
    QRgb dark;
    QRgb light;
};

constexpr std::array states{
    Tones{u"checkmark.circle.fill", 0xff1a8541, 0xff6fdc99},
    Tones{u"exclamationmark.triangle.fill", 0xffa66800, 0xffffc65c},
    Tones{u"xmark.octagon.fill", 0xffd93a3f, 0xffffb0ab},
};
constexpr Tones other{{}, 0xff6f757e, 0xffc4c8cf};

const Tones& tones(const QString& symbolName) {
    const auto* found = std::ranges::find(states, QStringView{symbolName}, &Tones::symbolName);
    return found == states.end() ? other : *found;
}

QPixmap picture(const QString& symbolName, int size) {
    const auto [state, dark, light] = tones(symbolName);
    const qreal unit = size / grid;
    QPixmap result{size, size};
    result.fill(Qt::transparent);
    QPainter painter{&result};
    const QPixmap rim = Symbol::pixmap(symbolName, size, QColor::fromRgb(light), 1);
    const int width = static_cast<int>(std::lround(unit));
    for (const int x : {-width, 0, width}) {
        for (const int y : {-width, 0, width}) {
            painter.drawPixmap(x, y, rim);
        }
    }
    if (!state.isEmpty()) {
        painter.fillRect(QRectF{mark.topLeft() * unit, mark.size() * unit}, QColor::fromRgb(light));
    }
    painter.drawPixmap(0, 0, Symbol::pixmap(symbolName, size, QColor::fromRgb(dark), 1));
    painter.end();
    // What was needed to paint on a picture is kept for as long as it lives, but not by its copy.
    return result.copy();
}

}

// Kept pictures of all states would take 170 KB, and Qt would keep those that it had shown for good.
QIcon TrayIcon::icon(const QString& symbolName) {
    return drawnIcon([symbolName](int side) { return picture(symbolName, side); }, {16, 22, 24, 32, 48, 64});
}
