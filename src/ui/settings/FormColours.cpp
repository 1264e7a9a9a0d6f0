#include "ui/settings/FormColours.h"

#include <QGuiApplication>
#include <QPalette>

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

QColor fromDesktop(QPalette::ColorRole role) {
    return QGuiApplication::palette().color(role);
}

/// A little apart from the window.
QColor cardColour() {
    constexpr qreal nearlyWhite = 0.93;
    const auto window = fromDesktop(QPalette::Window);
    const auto ink = fromDesktop(QPalette::WindowText);
    if (luminance(ink) > luminance(window)) {
        return mix(window, Qt::white, 0.06);
    }
    return luminance(window) > nearlyWhite ? mix(window, ink, 0.04) : mix(window, Qt::white, 0.8);
}

/// The colour itself where it can be read on a card and on the window, else moved towards the text until it can.
QColor madeReadable(const QColor& colour) {
    const auto card = cardColour();
    const auto window = fromDesktop(QPalette::Window);
    const auto ink = fromDesktop(QPalette::WindowText);
    for (int step = 0; step < mixingSteps; ++step) {
        const auto candidate = mix(colour, ink, static_cast<qreal>(step) / mixingSteps);
        if (std::min(FormColours::contrast(candidate, card), FormColours::contrast(candidate, window)) >= readable) {
            return candidate;
        }
    }
    return ink;
}

}

QColor FormColours::of(ColourRole role) const {
    const auto ink = fromDesktop(QPalette::WindowText);
    switch (role) {
    case ColourRole::background:
        return fromDesktop(QPalette::Window);
    case ColourRole::surface:
    case ColourRole::surfaceElevated:
        return cardColour();
    case ColourRole::border:
        return mix(cardColour(), ink, 0.12);
    case ColourRole::text:
        return ink;
    case ColourRole::textMuted:
        return madeReadable(mix(ink, cardColour(), 0.42));
    case ColourRole::accent:
        return madeReadable(fromDesktop(QPalette::Highlight));
    default:
        return m_daypart.of(role);
    }
}

qreal FormColours::contrast(const QColor& one, const QColor& other) {
    constexpr qreal flare = 0.05;
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + flare) / (dark + flare);
}
