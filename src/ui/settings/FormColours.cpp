#include "ui/settings/FormColours.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace {

constexpr qreal readable = 4.6;
constexpr qreal nearlyWhite = 0.93;
constexpr int mixingSteps = 20;

QColor mix(const QColor& one, const QColor& other, qreal share) {
    const auto channel = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return {channel(one.red(), other.red()), channel(one.green(), other.green()), channel(one.blue(), other.blue())};
}

qreal luminance(const QColor& colour) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The desktop's colours, and a card's, which is a little apart from the window.
struct DesktopColours final {
    const QPalette palette = QGuiApplication::palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor ink = palette.color(QPalette::WindowText);
    const QColor card = luminance(ink) > luminance(window) ? mix(window, Qt::white, 0.06)
                        : luminance(window) > nearlyWhite  ? mix(window, ink, 0.04)
                                                           : mix(window, Qt::white, 0.8);

    /// The colour itself where it can be read on a card and on the window, else moved towards the text until it can.
    [[nodiscard]] QColor madeReadable(const QColor& colour) const {
        for (int step = 0; step < mixingSteps; ++step) {
            const auto moved = mix(colour, ink, static_cast<qreal>(step) / mixingSteps);
            if (std::min(FormColours::contrast(moved, card), FormColours::contrast(moved, window)) >= readable) {
                return moved;
            }
        }
        return ink;
    }
};

}

QColor FormColours::of(ColourRole role) const {
    const DesktopColours desktop;
    switch (role) {
    case ColourRole::background:
        return desktop.window;
    case ColourRole::surface:
    case ColourRole::surfaceElevated:
        return desktop.card;
    case ColourRole::border:
        return mix(desktop.card, desktop.ink, 0.12);
    case ColourRole::text:
        return desktop.ink;
    case ColourRole::textMuted:
        return desktop.madeReadable(mix(desktop.ink, desktop.card, 0.42));
    case ColourRole::accent:
        return desktop.madeReadable(desktop.palette.color(QPalette::Highlight));
    default:
        return m_daypart.of(role);
    }
}

qreal FormColours::contrast(const QColor& one, const QColor& other) {
    constexpr qreal flare = 0.05;
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + flare) / (dark + flare);
}
