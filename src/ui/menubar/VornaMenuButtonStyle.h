#pragma once

#include "daypart/DaypartPalette.h"

#include <QColor>
#include <QRectF>

class QPainter;

/// How a row of a menu looks: flat, with a faint tint while it is pressed.
struct VornaMenuButtonStyle final {
    DaypartPalette palette;

    [[nodiscard]] QColor foreground() const;
    void drawBackground(QPainter& painter, const QRectF& bounds, bool isPressed) const;
    void drawFocusRing(QPainter& painter, const QRectF& bounds) const;

    friend bool operator==(const VornaMenuButtonStyle&, const VornaMenuButtonStyle&) = default;
};
