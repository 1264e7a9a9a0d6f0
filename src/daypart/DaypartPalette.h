#pragma once

#include "daypart/Daypart.h"

#include <QRgb>

/// The ten colours of a daypart, each an opaque sRGB colour. Everything that is themed takes its colours from here.
struct DaypartPalette final {
    QRgb background;
    QRgb surface;
    QRgb surfaceElevated;
    QRgb border;
    QRgb text;
    QRgb textMuted;
    QRgb accent;
    QRgb success;
    QRgb warning;
    QRgb danger;

    /// The palette of a daypart; `for` is a word of the language.
    [[nodiscard]] static const DaypartPalette& of(Daypart daypart);

    friend bool operator==(const DaypartPalette&, const DaypartPalette&) = default;
};
