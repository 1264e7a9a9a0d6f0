#pragma once

#include "daypart/DaypartPalette.h"

#include <QColor>
#include <QRectF>

class QPainter;

/// How a quick action looks: filled with the accent.
struct VornaAccentButtonStyle final {
    DaypartPalette palette;

    [[nodiscard]] QColor foreground() const;
    void drawBackground(QPainter& painter, const QRectF& bounds, bool isPressed) const;
    void drawFocusRing(QPainter& painter, const QRectF& bounds) const;

    friend bool operator==(const VornaAccentButtonStyle&, const VornaAccentButtonStyle&) = default;
};
