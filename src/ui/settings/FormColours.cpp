#include "ui/settings/FormColours.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr qreal readable = 4.6;
constexpr int mixingSteps = 20;

QColor mix(const QColor& one, const QColor& other, qreal share) {
    const auto channel = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return QColor{channel(one.red(), other.red()), channel(one.green(), other.green()),
                  channel(one.blue(), other.blue())};
}

qreal luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

QColor translucent(QColor colour, qreal opacity) {
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

/// The colour itself where it can be read on a group and on the window, else moved towards the text until it can.
QColor madeReadable(const QColor& colour, const QPalette& palette) {
    const auto ground = FormColours::group(palette);
    const auto window = palette.color(QPalette::Window);
    const auto ink = FormColours::text(palette);
    for (int step = 0; step < mixingSteps; ++step) {
        const auto candidate = mix(colour, ink, static_cast<qreal>(step) / mixingSteps);
        if (std::min(FormColours::contrast(candidate, ground), FormColours::contrast(candidate, window)) >= readable) {
            return candidate;
        }
    }
    return ink;
}

}

namespace FormColours {

QColor group(const QPalette& palette) {
    constexpr qreal nearlyWhite = 0.93;
    const auto window = palette.color(QPalette::Window);
    const auto ink = text(palette);
    if (luminance(ink) > luminance(window)) {
        return mix(window, Qt::white, 0.06);
    }
    return luminance(window) > nearlyWhite ? mix(window, ink, 0.04) : mix(window, Qt::white, 0.8);
}

QColor outline(const QPalette& palette) {
    return mix(group(palette), text(palette), 0.12);
}

QColor text(const QPalette& palette) {
    return palette.color(QPalette::WindowText);
}

QColor secondaryText(const QPalette& palette) {
    return madeReadable(mix(text(palette), group(palette), 0.42), palette);
}

QColor accent(const QPalette& palette) {
    return madeReadable(palette.color(QPalette::Highlight), palette);
}

QColor hover(const QPalette& palette) {
    return translucent(text(palette), 0.06);
}

QColor pressed(const QPalette& palette) {
    return translucent(text(palette), 0.12);
}

QColor selection(const QPalette& palette) {
    return translucent(text(palette), 0.08);
}

qreal contrast(const QColor& one, const QColor& other) {
    constexpr qreal flare = 0.05;
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + flare) / (dark + flare);
}

}
